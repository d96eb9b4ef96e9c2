#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/dao.hpp"

namespace orvane {

/// A construct as the carrying over of decisions sees it.
struct CarryRow {
  std::string kvid;
  std::string name;
  std::optional<std::int64_t>
      shape; ///< number made of kind, picture, usage, occurs and length; older databases have none
  std::int64_t size = 0;
};

/// Where an old row went.
struct CarryMatch {
  int row = -1;       ///< index of the new row; -1: it is gone
  bool moved = false; ///< found by its name, not by its key
  int proposed = -1;  ///< of a row that is gone, the new row that it may have become under another name; -1: none
};

/// For each old row its new row, each new row at most once: (1) equal KVID, where rows whose keys differ in `#n` only
/// are aligned by shape first, then by key, then by order; (2) equal name, name of the parent and shape, unique among
/// the rows still open on both sides; (3) equal name that is unique on both sides. What is open then is proposed as
/// (4) renamed: same key of the parent, same shape, and the named items before and after it below that parent, or its
/// ends, are matched with those around the new row. Rows are in declaration order.
std::vector<CarryMatch> matchRows(const std::vector<CarryRow>& old, const std::vector<CarryRow>& fresh);

/// Statuses and comments of one verification, counted by construct and project.
struct CarryCounts {
  std::size_t carried = 0;  ///< stayed with their construct
  std::size_t moved = 0;    ///< went to the construct that its name leads to
  std::size_t archived = 0; ///< have no construct any more
  std::size_t restored = 0; ///< came back from the archive

  CarryCounts& operator+=(const CarryCounts& other);
  bool operator==(const CarryCounts&) const = default;
};

/// Brings every project's columns with their statuses and comments from a program's old database into the new one,
/// whose table Constructs holds `rows()` as the rowids 1, 2, …; they are asked for only when there is something to
/// carry. Decisions whose construct is gone go into the table Archive(KVID, Name, Project, Status, Classification,
/// ArchivedAt, Proposed), Project being the stem of the column pair, "" for the one pair of the earlier format (the
/// table is there only while it has rows) and Proposed the key of the construct that may be the same under another
/// name, Null where there is none or in databases of earlier versions; it follows that construct. Archived ones come
/// back when their key appears again, or their name where it is the only one of the program and of the archive. A
/// missing old database is fine; one that cannot be read is a platform::DatabaseError, and must not be replaced then.
/// `now` is in microseconds since 1970 UTC.
CarryCounts carryOver(const std::string& oldDatabase, platform::Database& fresh,
                      const std::function<std::vector<CarryRow>()>& rows, std::int64_t now);

/// A decision that found no place at a verification.
struct ArchivedDecision {
  std::string kvid, name;
  std::string project; ///< stem of its column pair; "" of the earlier format
  std::optional<int> status;
  std::string comment;
  std::int64_t since = 0; ///< microseconds since 1970 UTC
  std::string proposed;   ///< key of the construct that may be the same under another name; "": none
};
/// What the Archive of a program database holds, oldest first. Throws platform::DatabaseError.
std::vector<ArchivedDecision> archivedDecisions(const std::string& path);

/// A proposal that the analyst confirmed.
struct Acceptance {
  ArchivedDecision decision;
  bool taken = false; ///< false: the proposed construct has a status or comment of its own, and keeps it
};
/// Gives status and comment of the archived decisions that are chosen and have a proposal to the construct proposed,
/// and takes them out of the Archive; the latest first, all or nothing. Only decisions of that project (the stem of its
/// column pair) and of the earlier format. Throws platform::DatabaseError.
std::vector<Acceptance> acceptProposals(const std::string& path, const std::string& stem,
                                        const std::function<bool(const ArchivedDecision&)>& chosen);

} // namespace orvane
