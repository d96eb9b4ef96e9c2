#include <gtest/gtest.h>

#include "app/command.hpp"

#include <csignal>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

CommandTest::Result CommandTest::run(const std::string& line) const {
  const std::string files = m_place.file(".out");
  const std::string shell = "cd '" + folder + "' && XDG_CONFIG_HOME='" + m_place.file(".config") +
                            "' '" TARNSIFT_COMMAND "' " + line + " >'" + files + "' 2>'" + files + ".err' </dev/null";
  const int status = std::system(shell.c_str());
  Result result;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  result.out = platform::readText(files);
  result.error = platform::readText(files + ".err");
  return result;
}

CommandTest::Result CommandTest::good(const std::string& line) const {
  Result result = run(line);
  EXPECT_EQ(result.status, 0) << line << "\n" << result.error;
  return result;
}

void CommandTest::runAndKill(const std::string& line, int milliseconds) const {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const std::string shell = "cd '" + folder + "' && XDG_CONFIG_HOME='" + m_place.file(".config") +
                              "' exec '" TARNSIFT_COMMAND "' " + line + " >/dev/null 2>&1 </dev/null";
    ::execl("/bin/sh", "sh", "-c", shell.c_str(), nullptr);
    ::_exit(127);
  }
  ::usleep(static_cast<useconds_t>(milliseconds) * 1000);
  ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
}

void CommandTest::write(const std::string& name, const std::string& text) const {
  const auto slash = name.rfind('/');
  if (slash != std::string::npos) platform::createFolders(m_place.file(name.substr(0, slash)));
  platform::WriteFileAtomically(m_place.file(name), text);
}

std::vector<nlohmann::json> CommandTest::Result::objects() const {
  std::vector<nlohmann::json> all;
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);)
    all.push_back(nlohmann::json::parse(line));
  return all;
}

std::string fixedForm(const std::string& text) {
  std::istringstream lines(text);
  std::string fixed;
  for (std::string line; std::getline(lines, line);)
    fixed += "       " + line + "\n";
  return fixed;
}
