#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include <sys/wait.h>

#include "app/command.hpp"
#include "platform/runtime/text.hpp"

namespace {

namespace fs = std::filesystem;

std::string decoded(const std::string& url) {
  std::string text;
  for (std::size_t i = 0; i < url.size(); ++i) {
    if (url[i] == '%' && i + 2 < url.size() && std::isxdigit(url[i + 1]) && std::isxdigit(url[i + 2])) {
      text += static_cast<char>(std::stoi(url.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      text += url[i];
    }
  }
  return text;
}

std::vector<std::string> found(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::vector<std::string> all;
  for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
    all.push_back((*at)[1]);
  return all;
}

/// What leads nowhere in a folder of pages, "page -> link" a line; all links are counted.
struct LinkCheck {
  explicit LinkCheck(const std::string& folder) {
    for (const std::string& file : platform::walkFiles(folder))
      if (file.ends_with(".html") || file.ends_with(".htm")) {
        const auto ids = found(platform::readText(folder + "/" + file), " id=\"([^\"]*)\"");
        anchors[file] = {ids.begin(), ids.end()};
        std::set<std::string>& unique = anchors[file];
        if (unique.size() != ids.size()) broken += file + ": an anchor stands twice\n";
      }
    for (const auto& [file, ids] : anchors)
      for (const std::string& link : found(platform::readText(folder + "/" + file), "(?:href|src)=\"([^\"]*)\""))
        check(folder, file, link);
  }
  void check(const std::string& folder, const std::string& file, const std::string& link) {
    ++links;
    const auto hash = link.find('#');
    const std::string path = link.substr(0, hash);
    const std::string page =
        path.empty() ? file : (fs::path(file).parent_path() / decoded(path)).lexically_normal().string();
    const bool there = platform::fileExists(folder + "/" + page);
    const std::string anchor = hash == std::string::npos ? "" : link.substr(hash + 1);
    const bool leads = anchor.empty() || anchors[page].contains(anchor) || anchors[page].contains(decoded(anchor));
    if (!there || !leads) broken += file + " -> " + link + "\n";
  }
  std::map<std::string, std::set<std::string>> anchors;
  std::string broken;
  std::size_t links = 0;
};

std::string cobolText(const std::string& name, const std::string& items, const std::string& statements) {
  return fixedForm("IDENTIFICATION DIVISION.\nPROGRAM-ID. " + name + ".\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n" +
                   items + "PROCEDURE DIVISION.\n" + statements + "    GOBACK.\n");
}

} // namespace

class Page : public CommandTest {
 protected:
  void project() {
    good("init");
    good("add --project p src --copybooks copy");
    good("verify");
  }
  std::string text(const std::string& page) const { return platform::readText(m_place.file("site/" + page)); }
  /// The line of a page without its number: the markup of names and words.
  std::string line(const std::string& page, int number) const {
    const std::string whole = text(page);
    const std::string start = "<span id=\"L" + std::to_string(number) + "\">";
    const auto from = whole.find("</a>", whole.find(start)) + 4;
    return whole.substr(from, whole.find("</span>", from) - from);
  }
  void expectAllLinksLead() const {
    const LinkCheck links(m_place.file("site"));
    EXPECT_EQ(links.broken, "");
    EXPECT_GT(links.links, 20U);
  }
  std::string analysisOf(const std::string& name, const std::string& extension) const {
    for (const auto& file : platform::walkFiles(m_place.file("Analysis")))
      if (file.starts_with(name + "-") && file.ends_with(extension)) return m_place.file("Analysis/" + file);
    return {};
  }
};

TEST_F(Page, EveryLinkAndAnchorOfTheSamplesLeadsSomewhere) {
  const std::string samples = TARNSIFT_SOURCE_DIR "/samples/bank";
  good("impact " + samples + "/cobol --copybooks " + samples + "/copy --like '*ACCT*' --project bank");
  good("-C tarnsift-base filter --like '*CUST*' --to working");
  good("-C tarnsift-base filter --like '*DATE*' --to clean");
  const Result result = good("-C tarnsift-base page -o site");
  EXPECT_EQ(result.error, "");
  const LinkCheck links(m_place.file("site"));
  EXPECT_EQ(links.broken, "");
  EXPECT_GT(links.links, 3000U);
  for (const char* kind : {"cobol", "copy"})
    for (const auto& file : platform::walkFiles(samples + "/" + kind))
      EXPECT_TRUE(links.anchors.contains("Sources/" + file + ".html")) << file;
  // A field that a copybook declares, used in a program.
  EXPECT_NE(text("Sources/BKB040.cbl.html").find("href=\"BKCACCT.cpy.html#L"), std::string::npos);
}

TEST_F(Page, UsagesLeadToDeclarationsAndWordsHaveTheirKinds) {
  write("src/ONE.cbl", cobolText("ONE", "01 A PIC X.\n01 B VALUE 'x<y' PIC X(3).\n*  a & b\n",
                                 "    MOVE A TO B\n    ADD 1 TO RETURN-CODE.\n"));
  write("copy/NONE.cpy", "");
  project();
  good("move A --to affected");
  good("page -o site");
  EXPECT_EQ(line("Sources/ONE.cbl.html", 9),
            "           <i class=\"k\">MOVE</i> <a class=\"affected\" href=\"#L5\">A</a> <i class=\"k\">TO</i> "
            "<a href=\"#L6\">B</a>");
  EXPECT_EQ(line("Sources/ONE.cbl.html", 5),
            "       <i class=\"n\">01</i> <i class=\"affected\">A</i> <i class=\"k\">PIC</i> <i class=\"p\">X</i>.");
  EXPECT_NE(line("Sources/ONE.cbl.html", 6).find("<i class=\"l\">'x&lt;y'</i>"), std::string::npos)
      << line("Sources/ONE.cbl.html", 6);
  EXPECT_EQ(line("Sources/ONE.cbl.html", 10).find("href"), std::string::npos) << "a register has no declaration";
  EXPECT_NE(text("index.html").find("<a href=\"Tarnsift/Main.htm#ONE:1\">1</a>"), std::string::npos);
  expectAllLinksLead();
}

TEST_F(Page, AllPartsOfANameAreTinted) {
  write("copy/REC.cpy", fixedForm("01 :T:-A PIC X.\n01 :T:-B PIC X.\n"));
  write("copy/DO.cpy", fixedForm("    MOVE :T:-A TO :T:-B.\n"));
  write("src/ONE.cbl", fixedForm("PROGRAM-ID. ONE.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n"
                                 "COPY REC REPLACING ==:T:== BY ==WS==.\nPROCEDURE DIVISION.\n    MOVE WS-\n") +
                           "      -    A TO WS-B.\n" + fixedForm("    COPY DO REPLACING ==:T:== BY ==WS==.\n"));
  project();
  good("move WS-A --to affected");
  good("page -o site");
  const auto contains = [&](int number, const std::string& piece) {
    EXPECT_NE(line("Sources/ONE.cbl.html", number).find(piece), std::string::npos)
        << line("Sources/ONE.cbl.html", number);
  };
  const std::string link = "<a class=\"affected\" href=\"REC.cpy.html#L1\">";
  contains(4, "<i class=\"affected\">WS</i>");
  contains(6, link + "WS-</a>");
  contains(7, link + "A</a>");
  contains(8, "<i class=\"affected\">WS</i>"); // of two names, so it leads nowhere
  good("move WS-B --to clean");
  good("page -o site");
  contains(8, "==WS=="); // of names in two lists
  expectAllLinksLead();
}

TEST_F(Page, FilesOfOneNameAndOddNamesHavePagesOfTheirOwn) {
  for (const char* name : {"a/SAME", "b/SAME", "b/same", "A B#1%41", "\xC3\x9C-UML\xC3\x84UT", "-x", "file"})
    write(std::string("src/") + name + ".cbl", cobolText("P", "COPY 'MY BOOK'.\n", "    MOVE X TO Y.\n"));
  write("copy/MY BOOK.cpy", fixedForm("01 X PIC X.\n01 Y PIC X.\n"));
  project();
  good("filter --like X --to affected");
  good("page -o site");
  const LinkCheck links(m_place.file("site"));
  EXPECT_EQ(links.broken, "");
  std::set<std::string> pages;
  for (const auto& [page, ids] : links.anchors) {
    EXPECT_TRUE(std::regex_match(page, std::regex("[A-Za-z0-9._/-]+"))) << page;
    pages.insert(platform::lower(page));
  }
  EXPECT_EQ(pages.size(), links.anchors.size()) << "pages whose names differ in case only are one file elsewhere";
  EXPECT_EQ(pages.size(), 7U + 1 + 2) << "programs, the copybook, index and metrics";
  EXPECT_NE(text("Tarnsift/Main.htm").find("<a id=\"A B#1%41:1\">"), std::string::npos);
}

TEST_F(Page, ACopybookLinksWhereAllItsProgramsAgree) {
  write("copy/REC.cpy", fixedForm("01 SHARED PIC X.\n"));
  write("copy/DO.cpy", fixedForm("    MOVE SHARED TO OWN.\n"));
  write("src/ONE.cbl", cobolText("ONE", "COPY REC.\n01 OWN PIC X.\n", "COPY DO.\n"));
  project();
  good("page -o site");
  EXPECT_NE(line("Sources/DO.cpy.html", 1).find("<a href=\"ONE.cbl.html#L6\">OWN</a>"), std::string::npos)
      << "one program: no doubt";
  write("src/TWO.cbl", cobolText("TWO", "COPY REC.\n01 FIRST-OF-ALL PIC X.\n01 OWN PIC X.\n", "COPY DO.\n"));
  good("verify");
  good("page -o site");
  EXPECT_EQ(line("Sources/DO.cpy.html", 1), "           <i class=\"k\">MOVE</i> <a href=\"REC.cpy.html#L1\">SHARED</a> "
                                            "<i class=\"k\">TO</i> OWN.");
  EXPECT_NE(text("Sources/DO.cpy.html").find("<a href=\"TWO.cbl.html\">TWO</a>"), std::string::npos);
  expectAllLinksLead();
}

TEST_F(Page, SourcesThatChangedOrAreGoneAreToldOfAndKeepTheirAnchors) {
  write("copy/REC.cpy", fixedForm("01 A PIC X.\n01 B PIC X.\n"));
  write("src/ONE.cbl", cobolText("ONE", "COPY REC.\n01 C PIC X.\n", "    MOVE A TO B.\n    MOVE C TO A.\n"));
  write("src/TWO.cbl", cobolText("TWO", "01 D PIC X.\n01 E PIC X.\n", "    MOVE D TO E.\n"));
  project();
  good("filter --like '*' --to affected");
  write("src/ONE.cbl", fixedForm("IDENTIFICATION DIVISION.\n"));
  fs::remove(m_place.file("copy/REC.cpy"));
  const Result result = good("page -o site");
  EXPECT_EQ(result.error, "tarnsift: copy\\REC.cpy: has changed since its verification\n"
                          "tarnsift: src\\ONE.cbl: has changed since its verification\n");
  for (const char* page : {"Sources/ONE.cbl.html", "Sources/REC.cpy.html"})
    EXPECT_NE(text(page).find("class=\"warning\""), std::string::npos) << page;
  EXPECT_EQ(text("Sources/TWO.cbl.html").find("class=\"warning\""), std::string::npos);
  EXPECT_NE(text("index.html").find("Changed since the verification"), std::string::npos);
  expectAllLinksLead();
}

TEST_F(Page, ProgramsThatCannotBeReadAreLeftOutAndNamed) {
  write("copy/NONE.cpy", "");
  for (const char* name : {"GOOD", "NOKVA", "BADKVA", "BADDB"})
    write(std::string("src/") + name + ".cbl", cobolText(name, "01 A PIC X.\n01 B PIC X.\n", "    MOVE A TO B.\n"));
  write("src/LETTER.cbl", "Dear colleague,\n");
  project();
  good("filter --like A --to affected");
  fs::remove(analysisOf("NOKVA", ".kva"));
  fs::resize_file(analysisOf("BADKVA", ".kva"), 100);
  write("Analysis/" + fs::path(analysisOf("BADDB", ".mdb")).filename().string(), std::string(9000, 'x'));
  const Result result = good("page -o site");
  for (const char* name : {"NOKVA", "BADKVA", "BADDB", "LETTER"}) {
    EXPECT_NE(result.error.find(std::string("tarnsift: ") + name + ": left out: "), std::string::npos) << result.error;
    EXPECT_NE(text("index.html").find(std::string(".cbl.html\">") + name + "</a>: "), std::string::npos) << name;
    EXPECT_EQ(text("Tarnsift/Main.htm").find(name), std::string::npos) << name;
    EXPECT_NE(text(std::string("Sources/") + name + ".cbl.html").find("left out"), std::string::npos) << name;
  }
  EXPECT_EQ(result.error.find("GOOD"), std::string::npos);
  EXPECT_NE(text("Tarnsift/Main.htm").find("<a href=\"#GOOD:1\">1</a>"), std::string::npos);
  expectAllLinksLead();
}

TEST_F(Page, WhatCannotBeWrittenIsOneErrorThatSaysWhatIsMissing) {
  std::string items;
  for (int i = 0; i < 3000; ++i)
    items += "01 A" + std::to_string(i) + " PIC X.\n";
  write("copy/NONE.cpy", "");
  write("src/AONE.cbl", cobolText("AONE", "01 A PIC X.\n", ""));
  write("src/BIG.cbl", cobolText("BIG", items, ""));
  project();
  write("file", "x");
  const auto fails = [&](const Result& result, const std::vector<std::string>& parts) {
    EXPECT_EQ(result.status, 1) << result.error;
    for (const auto& part : parts)
      EXPECT_NE(result.error.find(part), std::string::npos) << result.error;
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
  };
  fails(run("page -o file"), {"/file: ", "a file"});
  fails(run("page -o file/below"), {"/file/below: "});
  fails(run("page -o 'back\\slash'"), {"backslash"});
  write("foreign/index.html", "<h1>My own</h1>");
  fails(run("page -o foreign"), {"index.html", "another folder"});
  EXPECT_EQ(platform::readText(m_place.file("foreign/index.html")), "<h1>My own</h1>");
  write("blocked/Tarnsift/Main.htm/x", "a folder where the page goes");
  fails(run("page -o blocked"), {"Main.htm", "2 of 2 source pages", "Main.htm and index.html are missing"});
  // A file system that takes no more: files end at 100 KB.
  const std::string out = m_place.file("full");
  const std::string shell = "cd '" + folder + "' && trap '' XFSZ && ulimit -f 200 && XDG_CONFIG_HOME='" +
                            m_place.file(".config") + "' '" TARNSIFT_COMMAND "' page -o full >'" + out + ".out' 2>'" +
                            out + ".err'";
  const int status = std::system(("/bin/dash -c \"" + shell + "\"").c_str());
  fails({WEXITSTATUS(status), "", platform::readText(out + ".err")},
        {"BIG.cbl.html: File too large", "1 of 2 source pages"});
  EXPECT_FALSE(fs::exists(out + "/index.html"));
  for (const auto& file : platform::walkFiles(out))
    EXPECT_FALSE(file.ends_with(".new")) << file;
}
