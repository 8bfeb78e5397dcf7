// File permissions that hold, whoever runs the tests.
#pragma once

#include <gtest/gtest.h>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace tintline::test {

// Nothing is protected from the superuser: be somebody else for a while.
class OrdinaryUser {
#ifndef _WIN32
 public:
  OrdinaryUser() : superuser_(::geteuid() == 0 && ::seteuid(65534) == 0) {}
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() { EXPECT_TRUE(!superuser_ || ::seteuid(0) == 0); }

 private:
  bool superuser_;
#endif
};

}  // namespace tintline::test
