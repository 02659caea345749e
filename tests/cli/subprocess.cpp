#include "subprocess.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

extern char** environ;

namespace clitest {

namespace {

struct Pipe {
  int fd[2] = {-1, -1};
  ~Pipe() {
    for (int f : fd)
      if (f >= 0) ::close(f);
  }
  void closeEnd(int i) {
    if (fd[i] >= 0) ::close(fd[i]);
    fd[i] = -1;
  }
};

}  // namespace

Outcome runProgram(std::string const& program, std::vector<std::string> const& arguments,
                   std::vector<std::string> const& environment) {
  Outcome outcome;
  Pipe out, err;
  if (::pipe2(out.fd, O_CLOEXEC) != 0 || ::pipe2(err.fd, O_CLOEXEC) != 0) {
    ADD_FAILURE() << "pipe: " << std::strerror(errno);
    return outcome;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, out.fd[1], 1);
  posix_spawn_file_actions_adddup2(&actions, err.fd[1], 2);

  std::vector<char*> argv;
  argv.push_back(const_cast<char*>(program.c_str()));
  for (std::string const& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);

  std::vector<std::string> variables;
  for (char** e = environ; *e != nullptr; ++e) {
    std::string const variable = *e;
    std::string const name = variable.substr(0, variable.find('=') + 1);
    bool const replaced = std::any_of(environment.begin(), environment.end(),
                                      [&](std::string const& o) { return o.compare(0, name.size(), name) == 0; });
    if (!replaced) variables.push_back(variable);
  }
  variables.insert(variables.end(), environment.begin(), environment.end());
  std::vector<char*> envp;
  for (std::string& variable : variables) envp.push_back(variable.data());
  envp.push_back(nullptr);

  pid_t pid = -1;
  int const spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  out.closeEnd(1);
  err.closeEnd(1);
  if (spawned != 0) {
    ADD_FAILURE() << "posix_spawn " << program << ": " << std::strerror(spawned);
    return outcome;
  }

  // Reads both pipes together, so that a child filling one of them never blocks.
  pollfd fds[2] = {{out.fd[0], POLLIN, 0}, {err.fd[0], POLLIN, 0}};
  std::string* sinks[2] = {&outcome.out, &outcome.err};
  int open = 2;
  while (open > 0) {
    if (::poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      ADD_FAILURE() << "poll: " << std::strerror(errno);
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      char buffer[65536];
      ssize_t const n = ::read(fds[i].fd, buffer, sizeof buffer);
      if (n > 0) {
        sinks[i]->append(buffer, static_cast<std::size_t>(n));
      } else if (n == 0 || errno != EINTR) {
        fds[i].fd = -1;  // end of file (or an error): stop polling it; the Pipe closes it
        --open;
      }
    }
  }

  int status = 0;
  while (::waitpid(pid, &status, 0) < 0) {
    if (errno != EINTR) {
      ADD_FAILURE() << "waitpid: " << std::strerror(errno);
      return outcome;
    }
  }
  if (WIFEXITED(status)) outcome.exitCode = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) outcome.signal = WTERMSIG(status);
  return outcome;
}

Outcome runCli(std::vector<std::string> const& arguments, std::vector<std::string> const& environment) {
  return runProgram(TRANSSPACE_CLI, arguments, environment);
}

std::vector<std::string> linesOf(std::string const& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

std::string demoSav() { return std::string(TRANSSPACE_EXAMPLES) + "/demo.sav"; }

std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    ADD_FAILURE() << "cannot read " << path;
    return std::string();
  }
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "transspace-cli-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "mkdtemp: " << std::strerror(errno);
  directory_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

std::string TempDir::write(std::string const& name, std::string const& content) const {
  std::string const file = path(name);
  std::ofstream out(file, std::ios::binary);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!out) ADD_FAILURE() << "cannot write " << file;
  return file;
}

}  // namespace clitest
