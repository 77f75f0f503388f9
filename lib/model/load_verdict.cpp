// How the last load of the catalogue went, kept until the next one.
#include "model/load_verdict.h"

namespace nasshare {
namespace {

Trouble verdict;

} // namespace

const Trouble &load_verdict() {
  return verdict;
}

LoadWatch::LoadWatch(Extent extent) : Watch(verdict) {
  if (extent == Extent::whole) {
    verdict = {};
  }
}

} // namespace nasshare
