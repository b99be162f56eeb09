#include "torture/fault_shim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kMostHandles = 4096;

struct Shim {
  char folder[1024] = "";
  std::size_t length = 0;
  long seen = 0;
  long dueAt = 0;
  int action = 0;
  bool stays = false;
  long bytesLeft = -1;
  long met = 0;
  const char* metName = "";
  char metPath[1024] = "";
  bool ours[kMostHandles] = {};
  bool synced[kMostHandles] = {};  // the disk has what was written
};

Shim shim;  // one a process, like the system calls that it stands before

/// The function that the process would have called without the shim.
template <class Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool IsBelow(const char* path) {
  return shim.length > 0 && path != nullptr && std::strncmp(path, shim.folder, shim.length) == 0 &&
         (path[shim.length] == '/' || path[shim.length] == '\0');
}

bool IsOurs(int handle) {
  return shim.length > 0 && handle >= 0 && handle < kMostHandles && shim.ours[handle];
}

void Note(int handle, bool ours) {
  if (handle < 0 || handle >= kMostHandles) return;
  shim.ours[handle] = ours;
  shim.synced[handle] = false;
}

/// A sync of what the disk has already can tell nothing new: the library does one of its own behind the
/// program's.
bool IsToSync(int handle) {
  return IsOurs(handle) && !shim.synced[handle];
}

int Synced(int handle, int result) {
  if (result == 0 && IsOurs(handle)) shim.synced[handle] = true;
  return result;
}

[[noreturn]] void Die() {
  ::kill(::getpid(), SIGKILL);
  for (;;) ::pause();
}

void KeepPath(const char* path) {
  std::strncpy(shim.metPath, path, sizeof shim.metPath - 1);
}

void KeepPathOf(int handle) {
  char link[40] = "/proc/self/fd/";
  std::size_t end = std::strlen(link);
  char digits[12];
  std::size_t count = 0;
  for (int rest = handle; rest > 0 || count == 0; rest /= 10)
    digits[count++] = static_cast<char>('0' + rest % 10);
  while (count > 0) link[end++] = digits[--count];
  const ssize_t length = ::readlink(link, shim.metPath, sizeof shim.metPath - 1);
  shim.metPath[length > 0 ? length : 0] = '\0';
}

/// Counts a call; true when it is due.
bool IsDue(const char* name) {
  ++shim.seen;
  const bool due = shim.dueAt > 0 && (shim.seen == shim.dueAt || (shim.stays && shim.seen > shim.dueAt));
  if (!due) return false;
  ++shim.met;
  shim.metName = name;
  return true;
}

/// True when the call has to fail; errno is set then.
bool Fails(const char* name, const char* path) {
  if (!IsDue(name)) return false;
  KeepPath(path);
  if (shim.action < 0) Die();
  errno = shim.action;
  return true;
}

bool Fails(const char* name, int handle) {
  if (!IsDue(name)) return false;
  KeepPathOf(handle);
  if (shim.action < 0) Die();
  errno = shim.action;
  return true;
}

int Opened(int handle, bool ours) {
  if (handle >= 0) Note(handle, ours);
  return handle;
}

mode_t ModeOf(int flags, va_list more) {
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return makes ? static_cast<mode_t>(va_arg(more, int)) : mode_t{0};
}

int Open(const char* name, const char* path, int flags, mode_t mode) {
  const bool ours = IsBelow(path);
  if (ours && Fails("open", path)) return -1;
  return Opened(Next<int(const char*, int, mode_t)>(name)(path, flags, mode), ours);
}

int OpenAt(const char* name, int folder, const char* path, int flags, mode_t mode) {
  const bool ours = IsBelow(path);
  if (ours && Fails("open", path)) return -1;
  return Opened(Next<int(int, const char*, int, mode_t)>(name)(folder, path, flags, mode), ours);
}

/// How many of the bytes still find a place; -1 with errno set when none does.
ssize_t Room(size_t bytes) {
  if (shim.bytesLeft < 0) return static_cast<ssize_t>(bytes);
  if (shim.bytesLeft == 0 && bytes > 0) {
    ++shim.met;
    shim.metName = "write";
    errno = ENOSPC;
    return -1;
  }
  const long room = static_cast<long>(bytes) < shim.bytesLeft ? static_cast<long>(bytes) : shim.bytesLeft;
  shim.bytesLeft -= room;
  return room;
}

using Write = ssize_t(int, const void*, size_t);

}  // namespace

extern "C" {

void FaultsWatch(const char* folder) {
  shim = Shim();
  if (folder == nullptr) return;
  std::strncpy(shim.folder, folder, sizeof shim.folder - 1);
  shim.length = std::strlen(shim.folder);
  while (shim.length > 1 && shim.folder[shim.length - 1] == '/') --shim.length;
}

void FaultsArm(long nth, int action, bool stays) {
  shim.dueAt = nth > 0 ? shim.seen + nth : 0;
  shim.action = action;
  shim.stays = stays;
  shim.met = 0;
  shim.metName = "";
}

void FaultsDiskFull(long bytes) {
  shim.bytesLeft = bytes;
  shim.met = 0;
  shim.metName = "";
}

long FaultsSeen() {
  return shim.seen;
}
long FaultsMet() {
  return shim.met;
}
const char* FaultsMetName() {
  return shim.metName;
}
const char* FaultsMetPath() {
  return shim.metPath;
}

int open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeOf(flags, more);
  va_end(more);
  return Open("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeOf(flags, more);
  va_end(more);
  return Open("open64", path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeOf(flags, more);
  va_end(more);
  return OpenAt("openat", folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeOf(flags, more);
  va_end(more);
  return OpenAt("openat64", folder, path, flags, mode);
}

ssize_t write(int handle, const void* bytes, size_t count) {
  const auto next = Next<Write>("write");
  if (!IsOurs(handle)) return next(handle, bytes, count);
  shim.synced[handle] = false;
  if (IsDue("write")) {
    KeepPathOf(handle);
    if (shim.action == kFaultTear) (void)next(handle, bytes, count / 2);
    if (shim.action < 0) Die();
    errno = shim.action;
    return -1;
  }
  const ssize_t room = Room(count);
  return room < 0 ? -1 : next(handle, bytes, static_cast<size_t>(room));
}

ssize_t sendfile(int to, int from, off_t* offset, size_t count) {
  if (IsOurs(to) && Fails("sendfile", to)) return -1;
  const ssize_t room = IsOurs(to) ? Room(count) : static_cast<ssize_t>(count);
  if (room < 0) return -1;
  return Next<ssize_t(int, int, off_t*, size_t)>("sendfile")(to, from, offset, static_cast<size_t>(room));
}

int fsync(int handle) {
  if (IsToSync(handle) && Fails("fsync", handle)) return -1;
  return Synced(handle, Next<int(int)>("fsync")(handle));
}

int fdatasync(int handle) {
  if (IsToSync(handle) && Fails("fdatasync", handle)) return -1;
  return Synced(handle, Next<int(int)>("fdatasync")(handle));
}

int sync_file_range(int handle, off64_t offset, off64_t count, unsigned int flags) {
  if (IsOurs(handle) && Fails("sync_file_range", handle)) return -1;
  return Next<int(int, off64_t, off64_t, unsigned int)>("sync_file_range")(handle, offset, count, flags);
}

int ftruncate(int handle, off_t length) noexcept {
  if (IsOurs(handle) && Fails("ftruncate", handle)) return -1;
  return Next<int(int, off_t)>("ftruncate")(handle, length);
}

int ftruncate64(int handle, off64_t length) noexcept {
  if (IsOurs(handle) && Fails("ftruncate", handle)) return -1;
  return Next<int(int, off64_t)>("ftruncate64")(handle, length);
}

int rename(const char* from, const char* to) noexcept {
  if (IsBelow(to) && Fails("rename", to)) return -1;
  return Next<int(const char*, const char*)>("rename")(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) noexcept {
  if (IsBelow(to) && Fails("rename", to)) return -1;
  return Next<int(int, const char*, int, const char*, unsigned int)>("renameat2")(fromFolder, from, toFolder,
                                                                                  to, flags);
}

int link(const char* from, const char* to) noexcept {
  if (IsBelow(to) && Fails("link", to)) return -1;
  return Next<int(const char*, const char*)>("link")(from, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
  if (IsBelow(to) && Fails("link", to)) return -1;
  return Next<int(int, const char*, int, const char*, int)>("linkat")(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) noexcept {
  if (IsBelow(path) && Fails("unlink", path)) return -1;
  return Next<int(const char*)>("unlink")(path);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
  if (IsBelow(path) && Fails("unlink", path)) return -1;
  return Next<int(int, const char*, int)>("unlinkat")(folder, path, flags);
}

int mkdir(const char* path, mode_t mode) noexcept {
  if (IsBelow(path) && Fails("mkdir", path)) return -1;
  return Next<int(const char*, mode_t)>("mkdir")(path, mode);
}

/// A close that fails has closed the file all the same; the bytes may be gone.
int close(int handle) {
  const bool fails = IsOurs(handle) && Fails("close", handle);
  const int why = errno;
  Note(handle, false);
  const int closed = Next<int(int)>("close")(handle);
  if (!fails) return closed;
  errno = why;
  return -1;
}
}
