// Signals that interrupt reads and writes, as a program's timer does, fail no copy.
#include "appliance.h"
#include "nasshare/support.h"

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace nasshare::tests {
namespace {

std::atomic<int> interruptions = 0;
static_assert(std::atomic<int>::is_always_lock_free);

void count(int /*signal*/) {
  interruptions.fetch_add(1);
}

// Interrupts the calling thread every few milliseconds, while another thread is at the other end.
class Interrupted {
public:
  explicit Interrupted(std::function<void()> other_end) {
    struct sigaction action = {};
    action.sa_handler = count; // without SA_RESTART
    ::sigaction(SIGALRM, &action, nullptr);
    sigset_t alarm;
    ::sigemptyset(&alarm);
    ::sigaddset(&alarm, SIGALRM);
    ::pthread_sigmask(SIG_BLOCK, &alarm, nullptr);
    other_end_ = std::thread(std::move(other_end));
    ::pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
    set_timer(2000);
  }
  ~Interrupted() {
    other_end_.join();
    set_timer(0);
  }
  Interrupted(const Interrupted &) = delete;
  Interrupted &operator=(const Interrupted &) = delete;

private:
  static void set_timer(suseconds_t microseconds) {
    const itimerval every{{0, microseconds}, {0, microseconds}};
    ::setitimer(ITIMER_REAL, &every, nullptr);
  }

  std::thread other_end_;
};

void wait_for_interruptions(int more) {
  const int enough = interruptions.load() + more;
  while (interruptions.load() < enough) {
    ::usleep(500);
  }
}

std::array<int, 2> new_pipe() {
  std::array<int, 2> ends{-1, -1};
  EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
  return ends;
}

void fill(int pipe_in) {
  const int flags = ::fcntl(pipe_in, F_GETFL);
  ::fcntl(pipe_in, F_SETFL, flags | O_NONBLOCK);
  while (::write(pipe_in, "f", 1) == 1) {
  }
  ::fcntl(pipe_in, F_SETFL, flags);
}

// Reads everything in small pieces, while the writer is interrupted.
std::string read_slowly(int pipe_out, std::size_t length) {
  std::string text;
  std::array<char, 30000> piece{};
  while (text.size() < length) {
    wait_for_interruptions(2);
    const ssize_t count_read = ::read(pipe_out, piece.data(), piece.size());
    if (count_read <= 0) {
      break;
    }
    text.append(piece.data(), static_cast<std::size_t>(count_read));
  }
  return text;
}

TEST(InterruptedRead, IsRepeated) {
  const auto ends = new_pipe();
  std::array<char, 8> buffer{};
  const Interrupted interrupted([&] {
    wait_for_interruptions(5);
    EXPECT_EQ(::write(ends[1], "late", 4), 4);
  });
  EXPECT_EQ(safe_read(ends[0], buffer.data(), buffer.size()), 4);
  EXPECT_STREQ(buffer.data(), "late");
}

TEST(InterruptedRead, FillsTheLength) {
  const auto ends = new_pipe();
  std::array<char, 16> buffer{};
  const Interrupted interrupted([&] {
    for (const char *piece : {"in ", "three ", "parts"}) {
      wait_for_interruptions(3);
      EXPECT_GT(::write(ends[1], piece, std::string(piece).size()), 0);
    }
  });
  EXPECT_EQ(full_read(ends[0], buffer.data(), 14), 14);
  EXPECT_STREQ(buffer.data(), "in three parts");
}

TEST(InterruptedWrite, IsRepeated) {
  const auto ends = new_pipe();
  fill(ends[1]);
  const Interrupted interrupted([&] {
    wait_for_interruptions(5);
    std::array<char, 4096> room{};
    EXPECT_EQ(::read(ends[0], room.data(), room.size()), 4096);
  });
  EXPECT_EQ(safe_write(ends[1], "x", 1), 1);
}

TEST(InterruptedWrite, WritesEverything) {
  const auto ends = new_pipe();
  const std::string text(300000, 'w');
  std::string received;
  {
    const Interrupted interrupted([&] { received = read_slowly(ends[0], text.size()); });
    EXPECT_EQ(full_write(ends[1], text.data(), text.size()), 300000);
  }
  EXPECT_EQ(received, text);
}

TEST(InterruptedCopy, FromASlowSourceIsWhole) {
  const auto ends = new_pipe();
  const int target = ::open("/tmp/target", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  {
    const Interrupted interrupted([&] {
      for (int i = 0; i < 5; ++i) {
        wait_for_interruptions(3);
        EXPECT_EQ(::write(ends[1], "piece;", 6), 6);
      }
      ::close(ends[1]);
    });
    EXPECT_EQ(copyfd_eof(ends[0], target, 0), 30);
  }
  EXPECT_EQ(read_file("/tmp/target"), "piece;piece;piece;piece;piece;");
}

TEST(InterruptedCopy, OfAFileIntoASlowTargetIsWhole) {
  const std::string text(300000, 't');
  Appliance{}.file("/tmp/source", text);
  ASSERT_EQ(::mkfifo("/tmp/target", 0600), 0);
  const int out = ::open("/tmp/target", O_RDWR | O_CLOEXEC); // so that opening it for writing does not wait
  std::string received;
  {
    const Interrupted interrupted([&] { received = read_slowly(out, text.size()); });
    EXPECT_EQ(copy_file("/tmp/source", "/tmp/target"), 0);
  }
  EXPECT_EQ(received, text);
}

} // namespace
} // namespace nasshare::tests
