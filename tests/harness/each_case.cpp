// Each case in a machine of its own.
#include "each_case.h"

#include "files.h"
#include "output.h"
#include "share.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <sched.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace nasshare::tests {

namespace {

// One of the machine's private spaces: its processes, files, ...
class Space {
public:
  Space(pid_t process, const std::string &name)
      : descriptor_(
            ::open(("/proc/" + std::to_string(process) + "/ns/" + name).c_str(), O_RDONLY | O_CLOEXEC)) {
    files::require(descriptor_ >= 0, name);
  }
  ~Space() { ::close(descriptor_); }
  Space(const Space &) = delete;
  Space &operator=(const Space &) = delete;

  void enter() const { files::require(::setns(descriptor_, 0) == 0, "setns"); }

private:
  int descriptor_;
};

// Lasts as long as this object, but not longer than a case may take.
class Machine {
public:
  explicit Machine(const std::vector<std::string> &command);
  ~Machine();
  Machine(const Machine &) = delete;
  Machine &operator=(const Machine &) = delete;

  // Runs the function in a child process, inside the machine.
  Ended run(const std::function<void()> &function) const;

private:
  void hold(std::vector<std::string> command, int input, int output) const;
  void read_environment(int stream);
  void move_in() const;

  pid_t holder_ = 0;
  int end_ = -1; // closing it ends the machine
  std::vector<std::string> environment_;
};

Machine::Machine(const std::vector<std::string> &command) {
  std::array<int, 2> input{};
  std::array<int, 2> output{};
  files::require(::pipe2(input.data(), O_CLOEXEC) == 0 && ::pipe2(output.data(), O_CLOEXEC) == 0, "pipe");
  holder_ = ::fork();
  files::require(holder_ >= 0, "fork");
  if (holder_ == 0) {
    hold(command, input[0], output[1]);
  }
  ::close(input[0]);
  ::close(output[1]);
  end_ = input[1];
  read_environment(output[0]);
  ::close(output[0]);
}

Machine::~Machine() {
  ::close(end_);
  ::waitpid(holder_, nullptr, 0);
}

// The machine's command prints its environment, behind that an empty string, and waits.
void Machine::hold(std::vector<std::string> command, int input, int output) const {
  ::dup2(input, STDIN_FILENO);
  ::dup2(output, STDOUT_FILENO);
  command.insert(command.end(), {"bash", "-c", "env -0 && printf '\\0' && read -rt 600"});
  const std::vector<char *> arguments = files::arguments_of(command);
  ::execvp(arguments[0], arguments.data());
  std::perror(arguments[0]);
  ::_exit(127);
}

void Machine::read_environment(int stream) {
  std::string variable;
  for (char character = 0; ::read(stream, &character, 1) == 1;) {
    if (character != '\0') {
      variable += character;
    } else if (!variable.empty()) {
      environment_.push_back(variable);
      variable.clear();
    } else {
      return;
    }
  }
  throw std::runtime_error("no machine was made");
}

Ended Machine::run(const std::function<void()> &function) const {
  const Space own_processes(::getpid(), "pid");
  Space(holder_, "pid_for_children").enter(); // the next child is born there
  Ended ended = run_to_exit([&] {
    ::close(end_);
    move_in();
    function();
  });
  own_processes.enter();
  return ended;
}

void Machine::move_in() const {
  const std::filesystem::path folder = std::filesystem::current_path();
  const Space network(holder_, "net");
  const Space host_name(holder_, "uts");
  const Space queues(holder_, "ipc");
  const Space mounts(holder_, "mnt"); // last, since /proc is another one then
  for (const Space *space : {&network, &host_name, &queues, &mounts}) {
    space->enter();
  }
  files::require(::access("/run/appliance/private", F_OK) == 0, "a private machine");
  std::filesystem::current_path(folder);
  ::clearenv();
  for (const std::string &variable : environment_) {
    const std::size_t sign = variable.find('=');
    ::setenv(variable.substr(0, sign).c_str(), variable.substr(sign + 1).c_str(), 1);
  }
}

// What nearly every case does with files of shares. Valgrind translates code when it first runs, and a child
// inherits the translation.
void warm_up() {
  const std::string text = share_xml({Share{"Music"}.everyone()});
  xmlDoc *document =
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NOBLANKS);
  xmlFree(xmlNodeGetContent(xmlDocGetRootElement(document)));
  xmlChar *written = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(document, &written, &size, "UTF-8", 1);
  xmlFree(written);
  xmlFreeDoc(document);
}

bool passes(const std::string &name, const std::vector<std::string> &machine_command) {
  const Ended ended = Machine(machine_command).run([&name] {
    GTEST_FLAG_SET(filter, name);
    const int status = RUN_ALL_TESTS();
    const auto &unit = *testing::UnitTest::GetInstance();
    const bool ran = unit.test_to_run_count() == 1 && unit.skipped_test_count() == 0;
    std::exit(ran ? status : 2);
  });
  if (ended.status == 0) {
    std::printf("passed %s\n", name.c_str());
    return true;
  }
  std::printf("%s%sfailed %s, status %d\n", ended.out.c_str(), ended.err.c_str(), name.c_str(), ended.status);
  return false;
}

} // namespace

bool run_each_case(const std::vector<std::string> &cases, const std::vector<std::string> &machine_command) {
  warm_up();
  bool all_pass = true;
  for (const std::string &name : cases) {
    all_pass = passes(name, machine_command) && all_pass;
  }
  return all_pass;
}

} // namespace nasshare::tests
