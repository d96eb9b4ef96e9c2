#pragma once

#include <stdexcept>
#include <string>

namespace platform {

/// What ends an operation. The message is one line, ready for the analyst: what failed, where, and why.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A key, column or name that is not there.
class KeyError : public Error {
 public:
  using Error::Error;
};

class FileError : public Error {
 public:
  FileError(const std::string& path, const std::string& reason) : Error(path + ": " + reason) {}
};

class DatabaseError : public Error {
 public:
  DatabaseError(const std::string& file, const std::string& statement, const std::string& reason)
      : Error(file + ": " + reason + (statement.empty() ? "" : " (" + statement + ")")) {}
};

/// Line and position (column) count from 1; 0 where the place is not known.
class XmlError : public Error {
 public:
  XmlError(const std::string& reason, int line, int position)
      : Error(line == 0 ? reason
                        : reason + " (line " + std::to_string(line) + ", position " + std::to_string(position) + ")") {}
};

class PatternError : public Error {
 public:
  using Error::Error;
};

} // namespace platform
