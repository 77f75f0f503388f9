// The errors of libxml2: none is printed, and a shortage of memory is doubt.
#include "base/xml_library.h"

#include "base/watch.h"

namespace nasshare {
namespace {

// The error is const in newer releases of libxml2.
template <class Error> void see_error(void *is_short_of_memory, Error error) {
  if (error->code == XML_ERR_NO_MEMORY) {
    *static_cast<bool *>(is_short_of_memory) = true;
  }
}

} // namespace

QuietLibrary::QuietLibrary() : context_(xmlStructuredErrorContext), handler_(xmlStructuredError) {
  xmlSetStructuredErrorFunc(&is_short_of_memory_, see_error);
}

QuietLibrary::~QuietLibrary() {
  xmlSetStructuredErrorFunc(context_, handler_);
  if (is_short_of_memory_) {
    note_doubt();
  }
}

} // namespace nasshare
