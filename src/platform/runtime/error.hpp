#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace platform {

/// What ends an operation. The message is one line, ready for the analyst: what, where, and what to do where that is
/// known.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A key that a keyed collection does not have, or has already; an unknown field or member.
class KeyError : public Error {
 public:
  using Error::Error;
};

class FileError : public Error {
 public:
  FileError(std::string path, const std::string& reason) : Error(path + ": " + reason), m_path(std::move(path)) {}
  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

class DatabaseError : public Error {
 public:
  DatabaseError(std::string file, std::string statement, std::string reason)
      : Error(file + ": " + reason + (statement.empty() ? "" : " [" + statement + "]")), m_file(std::move(file)),
        m_statement(std::move(statement)), m_reason(std::move(reason)) {}
  const std::string& file() const { return m_file; }
  const std::string& statement() const { return m_statement; } ///< empty when none was running
  const std::string& reason() const { return m_reason; }

 private:
  std::string m_file;
  std::string m_statement;
  std::string m_reason;
};

class XmlError : public Error {
 public:
  XmlError(std::string reason, int line, int position)
      : Error(line == 0 ? reason
                        : reason + " at line " + std::to_string(line) + ", position " + std::to_string(position)),
        m_reason(std::move(reason)), m_line(line), m_position(position) {}
  const std::string& reason() const { return m_reason; }
  int line() const { return m_line; }         ///< from 1; 0 when unknown
  int position() const { return m_position; } ///< column from 1; 0 when unknown

 private:
  std::string m_reason;
  int m_line;
  int m_position;
};

/// A wildcard pattern that cannot be used.
class PatternError : public Error {
 public:
  using Error::Error;
};

/// Runs one step whose failure is a normal answer. False when the step failed. Catches the platform's errors only.
template<typename Step>
bool ignoring(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const Error&) {
    return false;
  }
}

} // namespace platform
