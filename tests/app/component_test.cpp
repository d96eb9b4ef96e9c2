#include <gtest/gtest.h>

#include <sstream>

#include "app/command.hpp"
#include "platform/component/component.hpp"

using Component = CommandTest;

TEST_F(Component, TheLibraryExportsItsFourEntryPointsAndNothingElse) {
  const std::string listing = m_place.file("symbols");
  ASSERT_EQ(std::system(("nm -D --defined-only '" TARNSIFT_LIBRARY "' > '" + listing + "'").c_str()), 0);
  std::set<std::string> names;
  std::istringstream lines(platform::readText(listing));
  for (std::string address, kind, name; lines >> address >> kind >> name;)
    names.insert(name);
  EXPECT_EQ(names, (std::set<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                          "DllUnregisterServer"}));
}

TEST_F(Component, RegistersPerUserAndHandsOutItsClassByName) {
  ::setenv("XDG_CONFIG_HOME", m_place.file("config").c_str(), 1);
  EXPECT_EQ(platform::registeredLibrary("Tarnsift.TarnsiftEngine"), "");
  EXPECT_THROW(platform::createObject("Tarnsift.TarnsiftEngine"), platform::Error);
  platform::registerLibrary(TARNSIFT_LIBRARY);
  EXPECT_EQ(platform::registrationFile(), m_place.file("config/tarnsift/classes"));
  EXPECT_TRUE(platform::createObject("tarnsift.tarnsiftENGINE")) << "names go without regard to case";
  EXPECT_TRUE(platform::createObject("Tarnsift.UprgadeOptions"));
  EXPECT_THROW(platform::createObject("Tarnsift.Nothing"), platform::Error);
  try {
    platform::registerLibrary(m_place.file("libNone.so"));
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("libNone.so"), std::string::npos);
  }
}
