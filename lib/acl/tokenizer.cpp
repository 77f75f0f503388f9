// The tokenizer that callers walk access lists with: its place is the process's, as strtok's is.
#include "nasshare/acl.h"

#include <cstring>

namespace nasshare {
namespace {

char *next_token = nullptr; // where the next call with a null string goes on

} // namespace
} // namespace nasshare

using namespace nasshare;

char *smb_strtok(char *str, const char *delim) {
  if (delim == nullptr) {
    return nullptr;
  }
  char *const token = str == nullptr ? next_token : str + std::strspn(str, delim);
  if (token == nullptr) {
    return nullptr;
  }
  char *const end = token + std::strcspn(token, delim);
  char *const next = end + std::strspn(end, delim); // a run of delimiters, also at the end, is consumed whole
  next_token = *next == '\0' ? nullptr : next;
  std::memset(end, '\0', static_cast<std::size_t>(next - end));
  return token;
}
