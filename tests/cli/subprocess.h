// Support of the CLI tests: running a program as a child process and capturing what it writes and
// how it ends; files of the bundled example; temporary files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace clitest {

struct Outcome {
  int exitCode = -1;  // the exit status, or -1 when the child did not exit normally
  int signal = 0;     // the signal that ended the child, or 0
  std::string out;    // everything written to standard output
  std::string err;    // everything written to standard error
};

// Runs `program` with `arguments` (argv[1]...), standard input from /dev/null; fails the calling
// test (ADD_FAILURE) when the child cannot be started.
// `environment` entries ("NAME=value") replace or add to the test's own environment.
Outcome runProgram(std::string const& program, std::vector<std::string> const& arguments,
                   std::vector<std::string> const& environment = {});

// Runs the `transspace` binary of this build.
Outcome runCli(std::vector<std::string> const& arguments, std::vector<std::string> const& environment = {});

// The lines of `text`, without their '\n' (a final line without '\n' counts too).
std::vector<std::string> linesOf(std::string const& text);

// The bundled example, examples/data/demo.sav.
std::string demoSav();

// The whole content of a file (empty when it cannot be read; fails the test then).
std::string readFile(std::string const& path);

// A fresh directory, removed with everything in it at the end of the scope.
class TempDir {
public:
  TempDir();
  ~TempDir();
  TempDir(TempDir const&) = delete;
  TempDir& operator=(TempDir const&) = delete;

  // Writes `content` to the file `name` in the directory and returns its path.
  std::string write(std::string const& name, std::string const& content) const;
  std::string path(std::string const& name) const { return (directory_ / name).string(); }

private:
  std::filesystem::path directory_;
};

}  // namespace clitest
