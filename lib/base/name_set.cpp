// Names, each of which is found at once: at most half of the table's places are taken.
#include "base/name_set.h"

#include <cstring>
#include <functional>
#include <span>

namespace nasshare {

NameSet::~NameSet() {
  for (const auto &name : std::span(places_.get(), room_)) {
    std::free(name.bytes);
  }
}

NameSet::Name &NameSet::place_of(std::string_view name) const {
  auto i = std::hash<std::string_view>{}(name) & (room_ - 1);
  for (;;) {
    auto &place = places_.get()[i];
    if (place.bytes == nullptr || std::string_view(place.bytes, place.size) == name) {
      return place;
    }
    i = (i + 1) & (room_ - 1);
  }
}

bool NameSet::make_room() {
  constexpr std::size_t first_room = 64;
  if (2 * count_ < room_) {
    return true;
  }
  NameSet larger;
  larger.room_ = room_ == 0 ? first_room : 2 * room_;
  larger.places_.reset(static_cast<Name *>(std::calloc(larger.room_, sizeof(Name))));
  if (!larger.places_) {
    larger.room_ = 0;
    return false;
  }
  for (auto &name : std::span(places_.get(), room_)) {
    if (name.bytes != nullptr) {
      auto &place = larger.place_of({name.bytes, name.size});
      place = std::exchange(name, {});
    }
  }
  std::swap(places_, larger.places_);
  std::swap(room_, larger.room_);
  return true;
}

bool NameSet::insert(std::string_view name) {
  if (!make_room()) {
    return false;
  }
  auto &place = place_of(name);
  if (place.bytes != nullptr) {
    return true;
  }
  auto *const bytes = static_cast<char *>(std::malloc(name.size() + 1));
  if (bytes == nullptr) {
    return false;
  }
  std::memcpy(bytes, name.data(), name.size());
  place = {name.size(), bytes};
  ++count_;
  return true;
}

bool NameSet::contains(std::string_view name) const {
  return count_ > 0 && place_of(name).bytes != nullptr;
}

} // namespace nasshare
