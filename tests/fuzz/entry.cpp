// What libFuzzer calls.
#include "fuzz.h"
#include "machine.h"

#include "nasshare/acl.h"
#include "nasshare/dfs.h"

#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <libxml/xmlerror.h>
#include <unistd.h>

namespace nasshare::fuzzing {
namespace {

void refuse_message(void * /*context*/, const char *format, ...) {
  std::fprintf(stderr, "the parser says: %s\n", format);
  fuzzing::require(false, "the XML parser stays silent");
}

void refuse_error(void * /*context*/, xmlErrorPtr error) {
  refuse_message(nullptr, error->message == nullptr ? "" : error->message);
}

void begin_empty() {
  Free_All_List();
  Free_Name_List();
  dfs_remove_all();
  free_acnt_list();
  std::memset(static_cast<void *>(pss), 0, sizeof *pss);
  // The host program's own handlers.
  xmlSetGenericErrorFunc(nullptr, refuse_message);
  xmlSetStructuredErrorFunc(nullptr, refuse_error);
}

int lowest_free_descriptor() {
  int lowest = dup(STDERR_FILENO);
  close(lowest);
  return lowest;
}

} // namespace
} // namespace nasshare::fuzzing

using namespace nasshare;
using namespace nasshare::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  begin_empty();
  int before = lowest_free_descriptor();
  machine::start();
  fuzz({reinterpret_cast<const char *>(data), size});
  machine::stop();
  fuzzing::require(lowest_free_descriptor() == before, "every descriptor is closed");
  return 0;
}
