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

} // namespace nasshare
