#include "platform/program_file.hpp"

#include <platform/runtime/error.hpp>
#include <platform/xml/xml.hpp>

using testing::ElementsAre;
using testing::HasSubstr;

namespace platform {

namespace {

constexpr const char* kOptions = R"(<?xml version="1.0"?>
<OPTIONS>
  <CASE ID="Kelvane"/>
  <CASE ID="Tarnsift">
    <!-- the search -->
    <TEXT NAME="DefaultSearchName" VALUE="Names:A&amp;B"/>
    <GROUP NAME="SynonymSearch"><BOOL NAME="OverrideStatus" VALUE="true"/></GROUP>
    <BOOL NAME="OverrideStatus" VALUE="false"/>
    <LIST NAME="Pages"><CASE NAME="Filters">some text</CASE></LIST>
  </CASE>
</OPTIONS>)";

Node tarnsift(const Document& document) {
  return document.selectSingleNode("//CASE[@ID='Tarnsift']");
}

TEST(Document, answersXPathFromTheRootAndFromANode) {
  const Document document = Document::loadText(kOptions);
  const Node root = tarnsift(document);
  const struct {
    std::string xpath, value;
  } cases[] = {
      {"./TEXT[@NAME='DefaultSearchName']", "Names:A&B"},
      {"//TEXT[@NAME='DefaultSearchName']", "Names:A&B"},
      {".//BOOL[@NAME='OverrideStatus']", "true"}, // in document order
      {"./BOOL[@NAME='OverrideStatus']", "false"},
      {".//GROUP[@NAME='SynonymSearch']/BOOL[@NAME='OverrideStatus']", "true"},
  };
  for (const auto& [xpath, value] : cases)
    EXPECT_EQ(root.selectSingleNode(xpath).getAttribute("VALUE"), Value(value)) << xpath;
  EXPECT_FALSE(root.selectSingleNode("./BOOL[@NAME='None']"));
  EXPECT_EQ(document.selectNodes("//CASE").size(), 3U);
  EXPECT_EQ(document.selectSingleNode("/OPTIONS/CASE[2]"), root);
  for (const std::string wrong : {"./BOOL[@NAME='O'Neil']", "//", "count(//CASE)", "//@NAME", "unknown(1)"}) {
    EXPECT_THAT(messageOf([&] { root.selectSingleNode(wrong); }), HasSubstr(wrong)) << wrong;
  }
}

TEST(Node, hasElementsOnlyForNeighboursAndNullForMissingAttributes) {
  const Document document = Document::loadText(kOptions);
  const Node root = tarnsift(document);
  EXPECT_EQ(root.firstChild().name(), "TEXT") << "not the comment";
  EXPECT_EQ(root.firstChild().nextSibling().name(), "GROUP");
  EXPECT_EQ(root.children().size(), 4U);
  EXPECT_EQ(root.parent(), document.documentElement());
  EXPECT_FALSE(document.documentElement().parent());
  EXPECT_FALSE(root.nextSibling());
  EXPECT_EQ(root.selectSingleNode("./LIST/CASE").text(), "some text");
  EXPECT_TRUE(root.getAttribute("NAME").isNull());
  EXPECT_THAT(root.firstChild().attributeNames(), ElementsAre("NAME", "VALUE"));
  const Node nothing;
  EXPECT_THROW(nothing.getAttribute("NAME"), XmlError);
  EXPECT_THROW(nothing.selectSingleNode("."), XmlError);
  EXPECT_THROW(nothing.children(), XmlError);
}

TEST(Node, isBuiltMovedClonedAndRemoved) {
  const Document document = Document::loadText("<A><B X='1'><C/></B><D/></A>");
  Node a = document.documentElement();
  Node b = a.firstChild();
  Node d = b.nextSibling();
  Node made = document.createElement("E");
  made.setAttribute("Y", "<\"'&>\n");
  EXPECT_EQ(made.getAttribute("Y"), Value("<\"'&>\n"));
  d.appendChild(made);
  d.appendChild(b.cloneNode(false));
  d.appendChild(b.cloneNode(true)).setAttribute("X", "2");
  EXPECT_EQ(a.xml(),
            "<A><B X=\"1\"><C/></B><D><E Y=\"&lt;&quot;'&amp;&gt;&#10;\"/><B X=\"1\"/><B X=\"2\"><C/></B></D></A>");
  a.appendChild(b);
  made = d.removeChild(made);
  b.insertBefore(made, b.firstChild());
  made.removeAttribute("Y");
  made.setText("a<b");
  EXPECT_EQ(a.xml(), "<A><D><B X=\"1\"/><B X=\"2\"><C/></B></D><B X=\"1\"><E>a&lt;b</E><C/></B></A>");

  EXPECT_THROW(made.removeChild(b), XmlError);
  EXPECT_THROW(made.appendChild(a), XmlError) << "below itself";
  EXPECT_THROW(made.appendChild(made), XmlError);
  EXPECT_THROW(a.appendChild(Document::loadText("<X/>").documentElement()), XmlError);
  EXPECT_EQ(a.appendChild(document.importNode(Document::loadText("<X><Y/></X>").documentElement())).xml(),
            "<X><Y/></X>");
}

TEST(Node, refusesNamesAndTextsThatXmlCannotHold) {
  const Document document;
  for (const std::string name : {"", "a b", "1", "<", "a:b", "-x"})
    EXPECT_THROW(document.createElement(name), XmlError) << name;
  Node node = document.createElement("A");
  for (const std::string& text : {std::string("\x01"), std::string("a\0b", 3), std::string("\xff"),
                                  std::string("\xe2\x82"), std::string("\xef\xbf\xbf")}) {
    EXPECT_THROW(node.setAttribute("X", text), XmlError);
    EXPECT_THROW(node.setText(text), XmlError);
  }
  node.setAttribute("X", "t\t\xc3\xbc \xf0\x9f\x98\x80");
  EXPECT_EQ(node.getAttribute("X"), Value("t\t\xc3\xbc \xf0\x9f\x98\x80"));
}

TEST(Node, keepsItsDocumentAlive) {
  Node removed;
  Node child;
  {
    const Document document = Document::loadText("<A><B><C X='1'/></B></A>");
    child = document.selectSingleNode("//C");
    removed = document.documentElement().removeChild(document.selectSingleNode("//B"));
    const Node never = document.createElement("NEVER");
    Document other = Document::loadText("<Z/>");
    other.setDocumentElement(other.importNode(removed));
    EXPECT_EQ(other.documentElement().xml(), "<B><C X=\"1\"/></B>");
    removed.setText("gone");
  }
  EXPECT_EQ(child.getAttribute("X"), Value("1"));
  EXPECT_EQ(removed.xml(), "<B>gone</B>");
}

TEST(Document, savesWholeAndReadsBackTheSame) {
  const TemporaryFolder folder;
  const Document document = Document::loadText(kOptions);
  document.save(folder.file("o.xml"));
  const Document again = Document::load(folder.file("o.xml"));
  EXPECT_EQ(again.text(), document.text());
  EXPECT_THAT(again.text(), HasSubstr("\n    <BOOL NAME=\"OverrideStatus\" VALUE=\"false\"/>\n"));
  EXPECT_EQ(Document::loadText("<?xml version='1.0' encoding='ISO-8859-1'?><A X='\xfc'/>")
                .documentElement()
                .getAttribute("X"),
            Value("\xc3\xbc"));
  EXPECT_THROW(document.save(folder.file("none/o.xml")), FileError);
  EXPECT_THROW(Document::load(folder.file("none.xml")), FileError);
}

TEST(Document, tellsWhereAFileIsNotWellFormed) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("bad.xml"), "<A>\n  <B>\n</A>");
  try {
    Document::load(folder.file("bad.xml"));
    FAIL();
  } catch (const XmlError& error) {
    EXPECT_EQ(error.line(), 3);
    EXPECT_EQ(error.position(), 5);
    EXPECT_THAT(error.what(), HasSubstr("bad.xml: Opening and ending tag mismatch: B line 2 and A"));
  }
  std::string deep;
  for (int i = 0; i < 1000; ++i)
    deep += "<A>";
  for (const std::string& text : {std::string(), std::string("text"), std::string("<A/><B/>"), std::string("<A X=1/>"),
                                  std::string("<A>\x01</A>"), deep}) {
    EXPECT_THROW(Document::loadText(text), XmlError) << text.substr(0, 20);
  }
  EXPECT_THAT(messageOf([&] { Document::loadText("<A>" + std::string(std::size_t{64} << 20, ' ') + "</A>"); }),
              HasSubstr("64 MB"));
}

TEST(Document, readsNothingFromOutside) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("secret"), "secret");
  const std::string url = "file://" + folder.file("secret");
  EXPECT_THAT(messageOf([&] { Document::loadText("<!DOCTYPE A [<!ENTITY e SYSTEM '" + url + "'>]><A>&e;</A>"); }),
              HasSubstr("entities"));
  EXPECT_THROW(Document::loadText("<!DOCTYPE A [<!ENTITY a 'xxxxxxxx'><!ENTITY b '&a;&a;&a;&a;'>]><A>&b;</A>"),
               XmlError);
  EXPECT_EQ(Document::loadText("<!DOCTYPE A SYSTEM '" + url + "'><A/>").documentElement().name(), "A");
}

constexpr const char* kSheetHead = "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>";

TEST(Stylesheet, compilesOnceAndTransformsManyDocuments) {
  const Stylesheet sheet(
      std::string(kSheetHead) +
      "<xsl:output method='html'/><xsl:param name='title'/><xsl:template match='/R'><h1><xsl:value-of select='$title'/>"
      "</h1><xsl:for-each select='F'><p><xsl:value-of select='.' disable-output-escaping='yes'/>"
      "<xsl:text> </xsl:text><xsl:value-of select='@L'/></p></xsl:for-each></xsl:template></xsl:stylesheet>");
  const Document document = Document::loadText("<R><F L='&lt;1'>&lt;b&gt;x&lt;/b&gt;</F></R>");
  EXPECT_THAT(sheet.apply(document, {{"title", "it's \"so\""}}),
              HasSubstr("<h1>it's \"so\"</h1><p><b>x</b> &lt;1</p>"));
  EXPECT_EQ(sheet.apply(Document::loadText("<R/>")).find("<p>"), std::string::npos);
}

TEST(Stylesheet, tellsWhatIsWrongWithASheetAndReadsNoFile) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("s.xml"), "<S>secret</S>");
  const std::string head = kSheetHead;
  EXPECT_THROW(Stylesheet("<html>"), XmlError);
  EXPECT_THROW(Stylesheet("<html/>"), XmlError);
  EXPECT_THAT(messageOf([&] { Stylesheet(head + "<xsl:template match='A['/></xsl:stylesheet>"); }),
              testing::Not(testing::IsEmpty()));
  EXPECT_THAT(
      messageOf([&] { Stylesheet(head + "<xsl:include href='" + folder.file("s.xml") + "'/></xsl:stylesheet>"); }),
      HasSubstr("denied"));
  const Stylesheet reading(head + "<xsl:template match='/'><xsl:value-of select=\"document('" + folder.file("s.xml") +
                           "')\"/></xsl:template></xsl:stylesheet>");
  EXPECT_EQ(messageOf([&] {
              EXPECT_EQ(reading.apply(Document::loadText("<A/>")).find("secret"), std::string::npos);
            }).find("secret"),
            std::string::npos);
  const Stylesheet endless(head +
                           "<xsl:template match='/'><xsl:apply-templates select='/'/></xsl:template></xsl:stylesheet>");
  EXPECT_THROW(endless.apply(Document::loadText("<A/>")), XmlError);
}

} // namespace

} // namespace platform
