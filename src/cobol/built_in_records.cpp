#include "cobol/built_in_records.hpp"

#include <array>

namespace cobol {
namespace {

using Item = ItemTree::MadeItem;

constexpr Item kSqlca[] = {
    {.level = 1, .name = "SQLCA"},
    {.level = 5, .name = "SQLCAID", .picture = "X(8)"},
    {.level = 5, .name = "SQLCABC", .picture = "S9(9)", .usage = Usage::comp5},
    {.level = 5, .name = "SQLCODE", .picture = "S9(9)", .usage = Usage::comp5},
    {.level = 5, .name = "SQLERRM"},
    {.level = 49, .name = "SQLERRML", .picture = "S9(4)", .usage = Usage::comp5},
    {.level = 49, .name = "SQLERRMC", .picture = "X(70)"},
    {.level = 5, .name = "SQLERRP", .picture = "X(8)"},
    {.level = 5, .name = "SQLERRD", .picture = "S9(9)", .usage = Usage::comp5, .occurs = 6},
    {.level = 5, .name = "SQLWARN"},
    {.level = 10, .name = "SQLWARN0", .picture = "X"},
    {.level = 10, .name = "SQLWARN1", .picture = "X"},
    {.level = 10, .name = "SQLWARN2", .picture = "X"},
    {.level = 10, .name = "SQLWARN3", .picture = "X"},
    {.level = 10, .name = "SQLWARN4", .picture = "X"},
    {.level = 10, .name = "SQLWARN5", .picture = "X"},
    {.level = 10, .name = "SQLWARN6", .picture = "X"},
    {.level = 10, .name = "SQLWARN7", .picture = "X"},
    {.level = 5, .name = "SQLEXT"},
    {.level = 10, .name = "SQLWARN8", .picture = "X"},
    {.level = 10, .name = "SQLWARN9", .picture = "X"},
    {.level = 10, .name = "SQLWARNA", .picture = "X"},
    {.level = 10, .name = "SQLSTATE", .picture = "X(5)"},
};

constexpr Item kSqlda[] = {
    {.level = 1, .name = "SQLDA"},
    {.level = 5, .name = "SQLDAID", .picture = "X(8)"},
    {.level = 5, .name = "SQLDABC", .picture = "S9(9)", .usage = Usage::comp5},
    {.level = 5, .name = "SQLN", .picture = "S9(4)", .usage = Usage::comp5},
    {.level = 5, .name = "SQLD", .picture = "S9(4)", .usage = Usage::comp5},
    {.level = 5, .name = "SQLVAR", .occurs = 1489},
    {.level = 10, .name = "SQLVAR1"},
    {.level = 15, .name = "SQLTYPE", .picture = "S9(4)", .usage = Usage::comp5},
    {.level = 15, .name = "SQLLEN", .picture = "S9(4)", .usage = Usage::comp5},
    {.level = 15, .redefinesLast = true},
    {.level = 20, .name = "SQLPRECISION", .picture = "X"},
    {.level = 20, .name = "SQLSCALE", .picture = "X"},
    {.level = 15, .name = "SQLDATA", .usage = Usage::pointer},
    {.level = 15, .name = "SQLIND", .usage = Usage::pointer},
    {.level = 15, .name = "SQLNAME"},
    {.level = 49, .name = "SQLNAMEL", .picture = "S9(4)", .usage = Usage::comp5},
    {.level = 49, .name = "SQLNAMEC", .picture = "X(30)"},
};

constexpr Item kExecBlock[] = {
    {.level = 1, .name = "DFHEIBLK"},
    {.level = 2, .name = "EIBTIME", .picture = "S9(7)", .usage = Usage::comp3},
    {.level = 2, .name = "EIBDATE", .picture = "S9(7)", .usage = Usage::comp3},
    {.level = 2, .name = "EIBTRNID", .picture = "X(4)"},
    {.level = 2, .name = "EIBTASKN", .picture = "S9(7)", .usage = Usage::comp3},
    {.level = 2, .name = "EIBTRMID", .picture = "X(4)"},
    {.level = 2, .name = "DFHEIGDI", .picture = "S9(4)", .usage = Usage::comp},
    {.level = 2, .name = "EIBCPOSN", .picture = "S9(4)", .usage = Usage::comp},
    {.level = 2, .name = "EIBCALEN", .picture = "S9(4)", .usage = Usage::comp},
    {.level = 2, .name = "EIBAID", .picture = "X"},
    {.level = 2, .name = "EIBFN", .picture = "X(2)"},
    {.level = 2, .name = "EIBRCODE", .picture = "X(6)"},
    {.level = 2, .name = "EIBDS", .picture = "X(8)"},
    {.level = 2, .name = "EIBREQID", .picture = "X(8)"},
    {.level = 2, .name = "EIBRSRCE", .picture = "X(8)"},
    {.level = 2, .name = "EIBSYNC", .picture = "X"},
    {.level = 2, .name = "EIBFREE", .picture = "X"},
    {.level = 2, .name = "EIBRECV", .picture = "X"},
    {.level = 2, .name = "EIBSEND", .picture = "X"},
    {.level = 2, .name = "EIBATT", .picture = "X"},
    {.level = 2, .name = "EIBEOC", .picture = "X"},
    {.level = 2, .name = "EIBFMH", .picture = "X"},
    {.level = 2, .name = "EIBCOMPL", .picture = "X"},
    {.level = 2, .name = "EIBSIG", .picture = "X"},
    {.level = 2, .name = "EIBCONF", .picture = "X"},
    {.level = 2, .name = "EIBERR", .picture = "X"},
    {.level = 2, .name = "EIBERRCD", .picture = "X(4)"},
    {.level = 2, .name = "EIBSYNRB", .picture = "X"},
    {.level = 2, .name = "EIBNODAT", .picture = "X"},
    {.level = 2, .name = "EIBRESP", .picture = "S9(8)", .usage = Usage::comp},
    {.level = 2, .name = "EIBRESP2", .picture = "S9(8)", .usage = Usage::comp},
    {.level = 2, .name = "EIBRLDBK", .picture = "X"},
};

constexpr Item kDliBlock[] = {
    {.level = 1, .name = "DLZDIB"},
    {.level = 2, .name = "DIBVER", .picture = "X(2)"},
    {.level = 2, .name = "DIBSTAT", .picture = "X(2)"},
    {.level = 2, .name = "DIBSEGM", .picture = "X(8)"},
    {.level = 2, .name = "DIBFIL01", .picture = "X"},
    {.level = 2, .name = "DIBFIL02", .picture = "X"},
    {.level = 2, .name = "DIBSEGLV", .picture = "X(2)"},
    {.level = 2, .name = "DIBKFBL", .picture = "S9(4)", .usage = Usage::comp},
    {.level = 2, .name = "DIBDBDNM", .picture = "X(8)"},
    {.level = 2, .name = "DIBDBORG", .picture = "X(8)"},
    {.level = 2, .name = "DIBFIL03", .picture = "X(6)"},
};

// Records of one-byte constants: attention keys, and attributes of screen fields.
constexpr std::string_view kKeyNames[] = {
    "DFHAID",  "DFHNULL", "DFHENTER", "DFHCLEAR", "DFHCLRP", "DFHPEN",  "DFHOPID", "DFHMSRE", "DFHSTRF", "DFHTRIG",
    "DFHPA1",  "DFHPA2",  "DFHPA3",   "DFHPF1",   "DFHPF2",  "DFHPF3",  "DFHPF4",  "DFHPF5",  "DFHPF6",  "DFHPF7",
    "DFHPF8",  "DFHPF9",  "DFHPF10",  "DFHPF11",  "DFHPF12", "DFHPF13", "DFHPF14", "DFHPF15", "DFHPF16", "DFHPF17",
    "DFHPF18", "DFHPF19", "DFHPF20",  "DFHPF21",  "DFHPF22", "DFHPF23", "DFHPF24",
};

constexpr std::string_view kAttributeNames[] = {
    "DFHBMSCA", "DFHBMPEM", "DFHBMPNL", "DFHBMPFF", "DFHBMPCR", "DFHBMASK", "DFHBMUNP", "DFHBMUNN", "DFHBMPRO",
    "DFHBMBRY", "DFHBMDAR", "DFHBMFSE", "DFHBMASF", "DFHBMPRF", "DFHBMASB", "DFHBMPSO", "DFHBMPSI", "DFHBMEOF",
    "DFHBMCUR", "DFHBMEC",  "DFHBMFLG", "DFHBMDET", "DFHSA",    "DFHCOLOR", "DFHPS",    "DFHHLT",   "DFH3270",
    "DFHVAL",   "DFHOUTLN", "DFHBKTRN", "DFHALL",   "DFHERROR", "DFHDFT",   "DFHDFCOL", "DFHBLUE",  "DFHRED",
    "DFHPINK",  "DFHGREEN", "DFHTURQ",  "DFHYELLO", "DFHNEUTR", "DFHBASE",  "DFHDFHI",  "DFHBLINK", "DFHREVRS",
    "DFHUNDLN", "DFHMFIL",  "DFHMENT",  "DFHMFE",   "DFHMT",    "DFHMFT",   "DFHMET",   "DFHMFET",  "DFHUNNOD",
    "DFHUNIMD", "DFHUNNUM", "DFHUNNUB", "DFHUNINT", "DFHUNNON", "DFHPROTI", "DFHPROTN", "DFHDFFR",  "DFHLEFT",
    "DFHOVER",  "DFHRIGHT", "DFHUNDER", "DFHBOX",   "DFHSOSI",  "DFHTRANS", "DFHOPAQ",
};

template<std::size_t count>
constexpr std::array<Item, count> bytes(const std::string_view (&names)[count]) {
  std::array<Item, count> items{};
  for (std::size_t i = 0; i < count; ++i) {
    items[i].level = i == 0 ? 1 : 2;
    items[i].name = names[i];
    if (i > 0) items[i].picture = "X";
  }
  return items;
}

constexpr auto kKeys = bytes(kKeyNames);
constexpr auto kAttributes = bytes(kAttributeNames);

} // namespace

std::span<const ItemTree::MadeItem> builtInRecord(std::string_view copybook) {
  if (copybook == "SQLCA") return kSqlca;
  if (copybook == "SQLDA") return kSqlda;
  if (copybook == "DFHEIBLK") return kExecBlock;
  if (copybook == "DLZDIB") return kDliBlock;
  if (copybook == "DFHAID") return kKeys;
  if (copybook == "DFHBMSCA") return kAttributes;
  return {};
}

} // namespace cobol
