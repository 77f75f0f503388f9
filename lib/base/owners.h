// Owners for what must be given back. Those whose closing status matters have close().
#pragma once

#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace nasshare {

template <int (*Close)(FILE *)> class Stream {
public:
  explicit Stream(FILE *stream) : stream_(stream) {}
  Stream(const Stream &) = delete;
  Stream &operator=(const Stream &) = delete;
  ~Stream() { close(); }

  explicit operator bool() const { return stream_ != nullptr; }
  [[nodiscard]] FILE *get() const { return stream_; }
  // The closing status; -1 when nothing is open.
  int close() {
    auto *stream = std::exchange(stream_, nullptr);
    return stream == nullptr ? -1 : Close(stream);
  }

private:
  FILE *stream_;
};

using File = Stream<std::fclose>;
using Pipe = Stream<pclose>;

class Descriptor {
public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(Descriptor &&other) noexcept : fd_(other.release()) {}
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;
  Descriptor &operator=(Descriptor &&other) noexcept {
    std::swap(fd_, other.fd_); // the other closes what this one had
    return *this;
  }
  ~Descriptor() { close(); }

  explicit operator bool() const { return fd_ >= 0; }
  [[nodiscard]] int get() const { return fd_; }
  // Hands the descriptor over to the caller.
  [[nodiscard]] int release() { return std::exchange(fd_, -1); }
  int close() {
    const int fd = std::exchange(fd_, -1);
    return fd < 0 ? -1 : ::close(fd);
  }

private:
  int fd_;
};

struct CloseDirectory {
  void operator()(DIR *directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

// What malloc gave out.
struct FreeMemory {
  void operator()(void *memory) const { std::free(memory); }
};
template <class Content> using Allocated = std::unique_ptr<Content, FreeMemory>;

// Objects side by side in memory of malloc's, made one after another.
template <class Object> class Row {
public:
  // Room for so many; none when memory is short.
  explicit Row(std::size_t room)
      : objects_(static_cast<Object *>(std::malloc(room * sizeof(Object)))), room_(objects_ ? room : 0) {}
  Row(const Row &) = delete;
  Row &operator=(const Row &) = delete;
  ~Row() { std::destroy(begin(), end()); }

  // False without room for it.
  template <class... Arguments> [[nodiscard]] bool make(Arguments &&...arguments) {
    if (size_ == room_) {
      return false;
    }
    std::construct_at(objects_.get() + size_, std::forward<Arguments>(arguments)...);
    ++size_;
    return true;
  }

  [[nodiscard]] Object *begin() const { return objects_.get(); }
  [[nodiscard]] Object *end() const { return objects_.get() + size_; }

private:
  Allocated<Object> objects_;
  std::size_t room_;
  std::size_t size_ = 0;
};

} // namespace nasshare
