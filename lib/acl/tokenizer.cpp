#include "nasshare/acl.h"

#include <cstring>

namespace {

char *lastToken = nullptr; // where the next call with a null string goes on

} // namespace

char *smb_strtok(char *str, const char *delim) {
  if (delim == nullptr) {
    return nullptr;
  }
  char *token = str == nullptr ? lastToken : str + std::strspn(str, delim);
  if (token == nullptr) {
    return nullptr;
  }
  char *end = token + std::strcspn(token, delim);
  char *next = end + std::strspn(end, delim); // a run of delimiters, also at the end, is consumed whole
  lastToken = *next == '\0' ? nullptr : next;
  std::memset(end, '\0', static_cast<std::size_t>(next - end));
  return token;
}
