// Telling what is wrong after an interrupted change.
#include "verdict.h"

#include <algorithm>
#include <regex>
#include <utility>

namespace nasshare::tests {

namespace {

constexpr const char *temporary = "/tmp/.smb.xml";

bool is_litter(const std::string &path) {
  return path.ends_with(".new") || path.ends_with(".new.*");
}

// The child's last words without what differs from run to run: process ids and addresses.
std::string last_words(const std::string &messages) {
  const std::size_t summary = messages.find("SUMMARY");
  const std::regex numbers("==[0-9]+==|0x[0-9a-f]+|BuildId: [0-9a-f]+");
  const std::string words = std::regex_replace(messages.substr(0, 2000), numbers, "");
  return words + (summary == std::string::npos ? "" : messages.substr(summary));
}

std::string quoted(const std::string &path, const std::string &text) {
  return path + " is neither the old nor the new file:\n" + text;
}

std::string difference(const Files &expected, const Files &found) {
  std::string text;
  for (const auto &[path, content] : expected) {
    if (!found.contains(path)) {
      text += path + " is missing\n";
    } else if (found.at(path) != content) {
      text += path + " should be\n" + content + "and is\n" + found.at(path);
    }
  }
  for (const auto &[path, content] : found) {
    if (!expected.contains(path)) {
      text += path + " lies about\n";
    }
  }
  return text;
}

} // namespace

Verdict::Verdict(Change change, Files before) : change_(std::move(change)), before_(std::move(before)) {}

void Verdict::begin() const {
  restore(before_);
}

bool Verdict::is_old(const std::string &path, const Files &now) const {
  return before_.contains(path) && now.contains(path) && now.at(path) == before_.at(path);
}

bool Verdict::is_new(const std::string &path, const Files &now) const {
  return change_.after.contains(path) && now.contains(path) && now.at(path) == change_.after.at(path);
}

std::string Verdict::of_files(const Files &now, bool killed) const {
  std::string wrong;
  for (const auto &[path, text] : before_) {
    if (!now.contains(path)) {
      wrong += path + " is gone\n";
    } else if (!is_old(path, now) && !is_new(path, now)) {
      wrong += quoted(path, now.at(path));
    }
  }
  for (const auto &[path, text] : now) {
    const bool is_temporary = path == temporary && text == change_.after.begin()->second;
    if (!before_.contains(path) && !(killed && (is_litter(path) || is_temporary))) {
      wrong += path + " lies about:\n" + text;
    }
  }
  return wrong;
}

std::string Verdict::of_answer(const Files &now, const Interrupted &end) const {
  const auto is_new_file = [&](const auto &file) { return is_new(file.first, now); };
  const bool any_new = std::ranges::any_of(change_.after, is_new_file);
  const bool all_new = std::ranges::all_of(change_.after, is_new_file);
  // A catalogue that is not done lies on no volume; of a change of two different files the first may be done.
  const bool is_spread =
      change_.after.size() == 2 && change_.after.begin()->second == change_.after.rbegin()->second;
  const bool any_done = is_spread ? any_new : all_new;
  if (change_.name == "xml_set_str") {
    return "";
  }
  if (end.answer == 1 && !all_new && !(change_.is_shown && change_.is_shown(now))) {
    return "answered 1 although the old file stands\n";
  }
  if (end.answer != 1 && any_done) {
    return "answered " + std::to_string(end.answer) + " although a new file stands\n";
  }
  return "";
}

std::string Verdict::of_next(const Files &now) {
  if (!seen_.insert(now).second) {
    return "";
  }
  Files expected = change_.after_next(now);
  std::erase_if(expected, [&](const auto &file) {
    return !before_.contains(file.first) && !file.first.ends_with(".new.*");
  });
  const Interrupted end = run_alone(change_.next);
  if (end.answer != 1) {
    return "the next change ended with status " + std::to_string(end.status) + "\n" +
           last_words(end.messages);
  }
  const std::string wrong = difference(expected, stored_files());
  return wrong.empty() ? "" : "after the next change " + wrong;
}

std::string Verdict::after_kill() {
  const Files now = stored_files();
  const std::string wrong = of_files(now, true);
  return wrong.empty() ? of_next(now) : wrong;
}

std::string Verdict::after_failure(const Interrupted &end) {
  constexpr int without_volume = 255; // the load saw no disk or no volume
  if (!end.answered && end.status != without_volume) {
    return "ended with status " + std::to_string(end.status) + "\n" + last_words(end.messages);
  }
  const Files now = stored_files();
  const std::string wrong = of_files(now, false) + of_answer(now, end);
  return wrong.empty() ? of_next(now) : wrong;
}

std::string Verdict::after_success(const Interrupted &end) const {
  Files expected = before_;
  for (const auto &[path, text] : change_.after) {
    expected[path] = text;
  }
  const std::string wrong = difference(expected, stored_files());
  return end.answer == 1
             ? wrong
             : "ended with status " + std::to_string(end.status) + "\n" + last_words(end.messages) + wrong;
}

} // namespace nasshare::tests
