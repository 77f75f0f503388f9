// How the last load of the catalogue went, kept until the next one.
#include "model/load_verdict.h"

#include "base/linked_list.h"
#include "nasshare/catalogue.h"

#include <functional>

namespace nasshare {
namespace {

Trouble verdict;

bool lies_in(const smb_share &share, const void *place) {
  const std::less_equal<> is_before;
  const std::less<> is_short_of;
  return is_before(static_cast<const void *>(&share), place) &&
         is_short_of(place, static_cast<const void *>(&share + 1));
}

} // namespace

const Trouble &load_verdict() {
  return verdict;
}

LoadWatch::LoadWatch(Extent extent) : KeptWatch(verdict) {
  if (extent == Extent::whole) {
    verdict = {};
  }
}

ListWatch::ListWatch(const void *changed) {
  if (find(*pss, [changed](const smb_share &share) { return lies_in(share, changed); }) != nullptr) {
    watch_.emplace(LoadWatch::Extent::more);
  }
}

} // namespace nasshare
