#include <cstdlib>

#include <gtest/gtest.h>

#include "desktop/application.hpp"

// The widgets of these tests are real ones on a platform without a display.
int main(int argc, char** argv) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  testing::InitGoogleTest(&argc, argv);
  desktop::Application application(argc, argv, "light");
  return RUN_ALL_TESTS();
}
