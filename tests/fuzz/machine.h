// The machine that a fuzzed operation sees: files, commands and accounts that exist only in memory. The
// linker hands this folder every call that would reach the real ones (--wrap), the fuzzer's own calls
// included; those are passed on while no input runs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nasshare::machine {

// From here to stop() nothing of the real machine is read, run or changed. It starts without files and with
// the accounts root, nobody, alice, bob and "d e" and the groups allaccount (alice, bob), staff (alice) and
// "Domain Users".
void start();
void stop();

// The file holds that text from now on.
void file(const std::string &path, std::string_view text);
std::optional<std::string> content(const std::string &path);

// Whether access() finds paths that are no files of this machine, such as the folders of shares.
void folders(bool exist);

// What a command prints, named by its first word.
void command(const std::string &name, std::string_view output);

// The bytes with which disks and the interface's driver answer.
void device(std::string_view answer);

} // namespace nasshare::machine
