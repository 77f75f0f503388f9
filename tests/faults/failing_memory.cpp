// Turning the references of libraries to functions that fail.
#include "failing_memory.h"

#include "files.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <dlfcn.h>
#include <link.h>
#include <new>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace nasshare::tests {

namespace {

// ---- Which allocation fails

int allocations_left = 0; // until one fails; 0 or less behind it
Shortage kind = Shortage::once;
bool armed = false;
bool *reached = nullptr;

bool is_to_fail() {
  if (!armed) {
    return false;
  }
  --allocations_left;
  const bool fails = allocations_left == 0 || (allocations_left < 0 && kind == Shortage::from_then_on);
  if (fails) {
    *reached = true;
  }
  return fails;
}

void *no_memory() {
  errno = ENOMEM;
  return nullptr;
}

template <class Function> Function *real(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_DEFAULT, name));
}

auto *const real_malloc = real<void *(std::size_t)>("malloc");
auto *const real_calloc = real<void *(std::size_t, std::size_t)>("calloc");
auto *const real_realloc = real<void *(void *, std::size_t)>("realloc");
auto *const real_new = real<void *(std::size_t)>("_Znwm");

void *failing_malloc(std::size_t size) {
  return is_to_fail() ? no_memory() : real_malloc(size);
}

void *failing_calloc(std::size_t count, std::size_t size) {
  return is_to_fail() ? no_memory() : real_calloc(count, size);
}

void *failing_realloc(void *old, std::size_t size) {
  return is_to_fail() ? no_memory() : real_realloc(old, size);
}

void *failing_new(std::size_t size) {
  if (is_to_fail()) {
    throw std::bad_alloc();
  }
  return real_new(size);
}

// The kernel's stand-in allocates, as no kernel does in its caller's memory.
int kernels_ioctl(int file, unsigned long request, void *argument) {
  const bool was_armed = std::exchange(armed, false);
  const int result = ioctl(file, request, argument);
  armed = was_armed;
  return result;
}

// ---- The libraries' references to these functions are turned here

struct Replacement {
  std::string_view name;
  void *function;
};

const std::array replacements{Replacement{"malloc", reinterpret_cast<void *>(failing_malloc)},
                              Replacement{"calloc", reinterpret_cast<void *>(failing_calloc)},
                              Replacement{"realloc", reinterpret_cast<void *>(failing_realloc)},
                              Replacement{"_Znwm", reinterpret_cast<void *>(failing_new)},
                              Replacement{"ioctl", reinterpret_cast<void *>(kernels_ioctl)}};

[[maybe_unused]] void *replacement_of(std::string_view name) {
  for (const Replacement &replacement : replacements) {
    if (replacement.name == name) {
      return replacement.function;
    }
  }
  return nullptr;
}

// References may lie in pages that are read-only once the program has started.
[[maybe_unused]] void turn(std::uintptr_t place, void *function) {
  const auto page = place & ~static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE) - 1);
  const std::size_t length = place + sizeof function - page;
  files::require(mprotect(reinterpret_cast<void *>(page), length, PROT_READ | PROT_WRITE) == 0, "mprotect");
  *reinterpret_cast<void **>(place) = function;
}

#if defined(__x86_64__)

bool is_reference(const ElfW(Rela) & entry) {
  const auto type = ELF64_R_TYPE(entry.r_info);
  return type == R_X86_64_JUMP_SLOT || type == R_X86_64_GLOB_DAT || type == R_X86_64_64;
}

// The tables of a loaded library that the System V ABI's dynamic section names.
struct Library {
  explicit Library(const dl_phdr_info &info) : base(info.dlpi_addr) {
    for (int i = 0; i < info.dlpi_phnum; ++i) {
      if (info.dlpi_phdr[i].p_type == PT_DYNAMIC) {
        read(reinterpret_cast<const ElfW(Dyn) *>(base + info.dlpi_phdr[i].p_vaddr));
      }
    }
  }

  void turn_references() const {
    turn_in(data, data_size);
    turn_in(calls, calls_size);
  }

  std::uintptr_t base;
  const ElfW(Sym) *symbols = nullptr;
  const char *names = nullptr;
  const ElfW(Rela) *data = nullptr, *calls = nullptr;
  std::size_t data_size = 0, calls_size = 0;

private:
  void read(const ElfW(Dyn) * entry) {
    for (; entry->d_tag != DT_NULL; ++entry) {
      if (entry->d_tag == DT_SYMTAB) {
        symbols = reinterpret_cast<const ElfW(Sym) *>(entry->d_un.d_ptr);
      } else if (entry->d_tag == DT_STRTAB) {
        names = reinterpret_cast<const char *>(entry->d_un.d_ptr);
      } else if (entry->d_tag == DT_RELA) {
        data = reinterpret_cast<const ElfW(Rela) *>(entry->d_un.d_ptr);
      } else if (entry->d_tag == DT_RELASZ) {
        data_size = entry->d_un.d_val / sizeof(ElfW(Rela));
      } else if (entry->d_tag == DT_JMPREL) {
        calls = reinterpret_cast<const ElfW(Rela) *>(entry->d_un.d_ptr);
      } else if (entry->d_tag == DT_PLTRELSZ) {
        calls_size = entry->d_un.d_val / sizeof(ElfW(Rela));
      }
    }
  }

  void turn_in(const ElfW(Rela) * entries, std::size_t size) const {
    for (std::size_t i = 0; i < size; ++i) {
      const char *name = names + symbols[ELF64_R_SYM(entries[i].r_info)].st_name;
      void *function = is_reference(entries[i]) ? replacement_of(name) : nullptr;
      if (function != nullptr) {
        turn(base + entries[i].r_offset, function);
      }
    }
  }
};

// The test program has no name; the loader and what watches over memory have memory of their own.
bool may_run_short(std::string_view library) {
  for (const char *part : {"ld-linux", "linux-vdso", "libasan", "libubsan", "libgtest"}) {
    if (library.find(part) != std::string_view::npos) {
      return false;
    }
  }
  return !library.empty();
}

int turn_references_of(dl_phdr_info *info, std::size_t /*size*/, void * /*unused*/) {
  if (may_run_short(info->dlpi_name)) {
    Library(*info).turn_references();
  }
  return 0;
}

#endif

} // namespace

bool watch_allocations() {
#if defined(__x86_64__)
  static const int turned = dl_iterate_phdr(turn_references_of, nullptr);
  return turned == 0;
#else
  return false;
#endif
}

void fail_allocation(int n, Shortage shortage, bool *came) {
  allocations_left = n;
  kind = shortage;
  reached = came;
  armed = true;
}

void fail_no_allocation() {
  armed = false;
}

} // namespace nasshare::tests
