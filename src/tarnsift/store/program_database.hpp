#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/dao/dao.hpp"
#include "platform/runtime/collection.hpp"

namespace tarnsift {

/// The list of a dataname, stored in the status column and the index of its list view; Null: in no list.
enum ListStatus : int { kWorking = 0, kAccepted = 1, kRejected = 2 };
/// Target of a filter that takes names out of all lists.
inline constexpr int kDeleteTarget = 3;
/// Index of the Synonyms list among the list views; never stored.
inline constexpr int kSynonymsList = 3;

/// The database of the program whose analysis file has that path: the last four characters become ".mdb".
std::string DatabasePath(std::string_view kelvanePath);

/// The text made fit for a bracketed column name, at most 48 characters (code points).
std::string EscapeColumnName(std::string_view text);
/// "[<escaped name>_Status]" and "[<escaped name>_Classification]".
std::string statusColumnOf(std::string_view projectName);
std::string classificationColumnOf(std::string_view projectName);

/// Opens the database of the program with that analysis file (relative to the base folder).
std::shared_ptr<platform::Database> openProgramDatabase(std::string_view kelvanePath);

/// Brings a program's database to the current indexes and columns; all or nothing. Needs Globals::FolderNames complete.
/// `programId` is the program's repository id, asked only for the earlier format.
void UpgradeProgramDatabase(platform::Database& database, const std::string& programId);

/// Whether the collection has the key, without regard to case.
template<typename T>
bool KeyExists(const platform::Collection<T>& collection, std::string_view key) {
  return platform::ignoring([&] { collection.Item(key); });
}

/// The text without blanks at its ends, right-aligned in 10 characters, so that texts sort as numbers.
std::string PadCount(std::string_view text);
inline std::string PadCount(std::int64_t count) {
  return PadCount(std::to_string(count));
}
/// The number that a padded count shows; "" is 0.
std::int64_t countOf(const std::string& padded);

/// The empty text for Null, else the value as text.
std::string NullToText(const platform::Value& value);

} // namespace tarnsift
