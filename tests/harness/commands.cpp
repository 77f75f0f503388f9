// Stand-in commands, which come first on PATH and write the transcript.
#include "appliance.h"
#include "files.h"
#include "text.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <sys/mount.h>
#include <unistd.h>

namespace nasshare::tests {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view stand_ins = "/run/appliance/bin";
constexpr const char *transcript_file = "/run/appliance/transcript";

std::string stand_in(const std::string &name) {
  return std::string(stand_ins) + "/" + name;
}

// Where the output of a stand-in for one of its streams lies.
std::string answer(const std::string &name, const std::string &stream) {
  return "/run/appliance/answers/" + name + "." + stream;
}

std::vector<std::string> search_path() {
  const char *variable = std::getenv("PATH");
  return pieces_of(variable != nullptr ? variable : "", ':');
}

bool has_program(const std::string &folder, const std::string &name) {
  return ::access((folder + "/" + name).c_str(), X_OK) == 0;
}

// A folder of links to everything in the folder but that command.
std::string folder_without(const std::string &folder, const std::string &name) {
  static int number = 0;
  std::string shadow = "/run/appliance/shadow-" + std::to_string(::getpid()) + "-" + std::to_string(number++);
  fs::create_directory(shadow);
  for (const auto &entry : fs::directory_iterator(folder)) {
    if (entry.path().filename() != name) {
      fs::create_symlink(entry.path(), fs::path(shadow) / entry.path().filename());
    }
  }
  return shadow;
}

void install(const std::string &name, std::string_view body) {
  std::string text = "#!/bin/sh\nprintf '%s\\n' \"";
  text.append(name).append("${*:+ $*}\" >>").append(transcript_file).append("\n").append(body).append("\n");
  files::remove(stand_in(name));
  files::write(stand_in(name), text, 0755);
}

// Covers the folder with links to all it holds, once.
void cover(const fs::path &folder) {
  const fs::path held = "/run/appliance/covered" + folder.string();
  if (fs::exists(held)) {
    return;
  }
  fs::create_directories(held);
  files::require(::mount(folder.c_str(), held.c_str(), "", MS_BIND, "") == 0, folder.string());
  files::require(::mount("programs", folder.c_str(), "tmpfs", 0, "mode=0755") == 0, folder.string());
  for (const auto &entry : fs::directory_iterator(held)) {
    fs::create_symlink(entry.is_symlink() ? fs::read_symlink(entry) : entry.path(),
                       folder / entry.path().filename());
  }
}

} // namespace

Appliance &Appliance::program(const std::string &path, std::string_view body) {
  no_program(path);
  return file(path, "#!/bin/sh\n" + std::string(body) + "\n", 0755);
}

Appliance &Appliance::no_program(const std::string &path) {
  cover(fs::path(path).parent_path());
  return remove(path);
}

Appliance &Appliance::command(const std::string &name, std::string_view output, int status,
                              std::string_view error_output) {
  std::string body;
  if (!output.empty()) {
    file(answer(name, "out"), output);
    body.append("cat ").append(answer(name, "out")).append("\n");
  }
  if (!error_output.empty()) {
    file(answer(name, "err"), error_output);
    body.append("cat ").append(answer(name, "err")).append(" >&2\n");
  }
  return script(name, body + "exit " + std::to_string(status));
}

Appliance &Appliance::script(const std::string &name, std::string_view body) {
  install(name, body);
  return *this;
}

Appliance &Appliance::logged(const std::string &name) {
  for (const std::string &folder : search_path()) {
    if (folder != stand_ins && has_program(folder, name)) {
      return script(name, "exec '" + (fs::path(folder) / name).string() + "' \"$@\"");
    }
  }
  throw std::runtime_error(name + " is not installed");
}

Appliance &Appliance::no_command(const std::string &name) {
  files::remove(stand_in(name));
  std::vector<std::string> folders = search_path();
  for (std::string &folder : folders) {
    if (has_program(folder, name)) {
      folder = folder_without(folder, name);
    }
  }
  files::require(::setenv("PATH", joined(folders, ":").c_str(), 1) == 0, "PATH");
  return *this;
}

std::string transcript() {
  return exists(transcript_file) ? read_file(transcript_file) : "";
}

std::string kernel_requests() {
  constexpr const char *requests = "/run/appliance/requests";
  return exists(requests) ? read_file(requests) : "";
}

} // namespace nasshare::tests
