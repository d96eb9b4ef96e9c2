#pragma once

#include <platform/runtime/error.hpp>

#include <unistd.h>

#include <cstdlib>

/// Rights mean nothing to root; for the life of this object the tests are an ordinary user.
class OrdinaryUser {
 public:
  OrdinaryUser() : m_user(::geteuid()) {
    if (m_user == 0 && ::seteuid(65534) != 0) throw platform::Error("cannot become an ordinary user");
  }
  ~OrdinaryUser() {
    if (::seteuid(m_user) != 0) std::abort();
  }

 private:
  uid_t m_user;
};
