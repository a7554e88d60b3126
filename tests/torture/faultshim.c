/* A preload library that numbers every step by which the program changes the disk or speaks to the network, and can end
 * the process at one of them, make one of them fail, or keep a journal from which a power cut is replayed.
 *
 *   SORVAN_FAULT_ROOT     only files below this folder count (and every socket); required for anything to happen
 *   SORVAN_FAULT          "kill before N" | "kill middle N" | "kill after N" | "fail N ERRNO" | "failfrom N ERRNO"
 *                         | "point before|after CALL PATTERN" (kills at the first CALL whose path holds PATTERN)
 *                         | "at before|middle|after|fail|failfrom K CALL GLOB [ERRNO]" (the same at the Kth CALL whose path
 *                           below the root matches GLOB, "/" for the root, "-" for the network: this step is the same one in every run,
 *                           however the network and the threads number it)
 *   SORVAN_FAULT_NETWORK  optional: "no" leaves the network's calls alone and uncounted
 *   SORVAN_FAULT_ARMED    optional: a "point" counts only once this file exists
 *   SORVAN_FAULT_STEPS    optional: a file that always holds the number of the last step, as eight bytes
 *   SORVAN_FAULT_JOURNAL  optional: a file to which every step is appended once it is done (see record())
 *
 * A "middle" kill lets half of a write or of a sending through; for other calls it is the same as "before".
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <limits.h>
#include <pthread.h>
#include <signal.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

enum mode { mode_none, mode_kill_before, mode_kill_middle, mode_kill_after, mode_fail, mode_fail_from, mode_point };

/* The mode that an "at" becomes once its step is reached, and how often its place was passed. */
static struct {
  enum mode mode;
  uint64_t wanted, seen;
} awaited;

static struct {
  int ready, files_only;
  enum mode mode;
  uint64_t step;
  int error;
  char root[PATH_MAX];
  char when[8], call[16], pattern[512];
  uint64_t* counter;
  uint64_t own_counter;
  int journal;
} shim;
static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static pthread_once_t once = PTHREAD_ONCE_INIT;

static int error_number(const char* name) {
  if (!strcmp(name, "ENOSPC")) return ENOSPC;
  if (!strcmp(name, "EDQUOT")) return EDQUOT;
  if (!strcmp(name, "EROFS")) return EROFS;
  return EIO;
}

static enum mode mode_named(const char* name) {
  if (!strcmp(name, "before")) return mode_kill_before;
  if (!strcmp(name, "middle")) return mode_kill_middle;
  if (!strcmp(name, "after")) return mode_kill_after;
  return !strcmp(name, "fail") ? mode_fail : mode_fail_from;
}

static void parse_at(const char* text) {
  char action[16] = "", error[16] = "";
  unsigned long long turn = 0;
  if (sscanf(text, "at %15s %llu %15s %511s %15s", action, &turn, shim.call, shim.pattern, error) < 4) return;
  awaited.mode = mode_named(action);
  awaited.wanted = turn;
  shim.error = error_number(error);
}

static void parse_fault(const char* text) {
  char a[16] = "", b[64] = "", c[256] = "", d[256] = "";
  const int words = sscanf(text, "%15s %63s %255s %255s", a, b, c, d);
  if (words >= 1 && !strcmp(a, "at")) {
    parse_at(text);
    return;
  }
  if (words >= 3 && !strcmp(a, "kill")) {
    shim.mode = !strcmp(b, "before") ? mode_kill_before : !strcmp(b, "middle") ? mode_kill_middle : mode_kill_after;
    shim.step = strtoull(c, NULL, 10);
  } else if (words >= 3 && (!strcmp(a, "fail") || !strcmp(a, "failfrom"))) {
    shim.mode = !strcmp(a, "fail") ? mode_fail : mode_fail_from;
    shim.step = strtoull(b, NULL, 10);
    shim.error = error_number(c);
  } else if (words == 4 && !strcmp(a, "point")) {
    shim.mode = mode_point;
    snprintf(shim.when, sizeof shim.when, "%.7s", b);
    snprintf(shim.call, sizeof shim.call, "%.15s", c);
    snprintf(shim.pattern, sizeof shim.pattern, "%.255s", d);
  }
}

static void start(void) {
  shim.counter = &shim.own_counter;
  shim.journal = -1;
  const char* root = getenv("SORVAN_FAULT_ROOT");
  if (!root) return;
  snprintf(shim.root, sizeof shim.root, "%s", root);
  const char* network = getenv("SORVAN_FAULT_NETWORK");
  shim.files_only = network && !strcmp(network, "no");
  if (getenv("SORVAN_FAULT")) parse_fault(getenv("SORVAN_FAULT"));
  const char* steps = getenv("SORVAN_FAULT_STEPS");
  if (steps) {
    const int file = (int)syscall(SYS_openat, AT_FDCWD, steps, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file >= 0 && syscall(SYS_ftruncate, file, 8L) == 0) {
      void* mapped = mmap(NULL, 8, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
      if (mapped != MAP_FAILED) shim.counter = mapped;
      syscall(SYS_close, file);
    }
    *shim.counter = 0;
  }
  const char* journal = getenv("SORVAN_FAULT_JOURNAL");
  if (journal)
    shim.journal = (int)syscall(SYS_openat, AT_FDCWD, journal, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  shim.ready = 1;
}

/* The absolute path of a name relative to a folder's descriptor. */
static void absolute(int folder, const char* name, char* path) {
  if (name[0] == '/') {
    snprintf(path, PATH_MAX, "%s", name);
    return;
  }
  char base[PATH_MAX] = "";
  if (folder == AT_FDCWD) {
    if (!getcwd(base, sizeof base)) base[0] = 0;
  } else {
    char link[64];
    snprintf(link, sizeof link, "/proc/self/fd/%d", folder);
    const ssize_t length = readlink(link, base, sizeof base - 1);
    base[length > 0 ? length : 0] = 0;
  }
  if ((size_t)snprintf(path, PATH_MAX, "%.2000s/%.2000s", base, name) >= PATH_MAX) path[0] = 0;
}

static void path_of(int descriptor, char* path) {
  char link[64];
  snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, PATH_MAX - 1);
  path[length > 0 ? length : 0] = 0;
}

static int counts(const char* path) {
  pthread_once(&once, start);
  const size_t length = strlen(shim.root);
  return shim.ready && !strncmp(path, shim.root, length) && (path[length] == '/' || path[length] == 0) &&
         !strstr(path, "library.store-shm") && !strstr(path, "workspace.lock");
}

static int is_socket(int descriptor) {
  pthread_once(&once, start);
  struct stat status;
  return shim.ready && !shim.files_only && fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

/* One line of journal: number of the step, call, path, second path, offset, length, then the bytes and a newline. The
 * calls "died" and "failed" stand for the end of the process, or a failure that this library made, at the step whose call
 * is the second path; "refused" for one that the system refused, such as making a folder that is there. */
static void record(const char* call, const char* path, const char* other, int64_t offset, const void* bytes,
                   size_t length) {
  if (shim.journal < 0) return;
  char head[2 * PATH_MAX + 128];
  const int size = snprintf(head, sizeof head, "%llu\t%s\t%s\t%s\t%lld\t%zu\n",
                            (unsigned long long)*shim.counter, call, path, other ? other : "", (long long)offset,
                            length);
  const char newline = '\n';
  const struct iovec parts[3] = {{head, (size_t)size}, {(void*)bytes, bytes ? length : 0}, {(void*)&newline, 1}};
  syscall(SYS_writev, shim.journal, parts, 3);
}

static void die(const char* call, const char* path) {
  record("died", path, call, 0, NULL, 0);
  syscall(SYS_kill, getpid(), SIGKILL);
  for (;;) pause();
}

static int armed(void) {
  const char* path = getenv("SORVAN_FAULT_ARMED");
  return !path || syscall(SYS_access, path, F_OK) == 0;
}

static int at_point(const char* when, const char* call, const char* path) {
  return shim.mode == mode_point && !strcmp(shim.when, when) && !strcmp(shim.call, call) &&
         strstr(path, shim.pattern) && armed();
}

/* Once the awaited step is reached it is a step with a number, like any other. */
static void await_step(const char* call, const char* path, uint64_t number) {
  if (awaited.mode == mode_none || strcmp(shim.call, call)) return;
  const char* below = path[0] ? path + strlen(shim.root) : "-";
  if (!below[0]) below = "/";
  if (fnmatch(shim.pattern, below, FNM_PATHNAME | FNM_PERIOD) || ++awaited.seen != awaited.wanted) return;
  shim.mode = awaited.mode;
  shim.step = number;
}

struct step {
  uint64_t number;
  int error;   /* what the call is to fail with, or 0 */
  int middle;  /* half of a write goes through, then the process ends */
};

/* Counts a step, and ends the process if it is to end before it. */
static struct step enter(const char* call, const char* path) {
  struct step step = {0, 0, 0};
  pthread_mutex_lock(&lock);
  step.number = ++*shim.counter;
  await_step(call, path, step.number);
  if (shim.mode == mode_kill_before && step.number == shim.step) die(call, path);
  if (at_point("before", call, path)) die(call, path);
  if (shim.mode == mode_kill_middle && step.number == shim.step) step.middle = 1;
  if ((shim.mode == mode_fail && step.number == shim.step) ||
      (shim.mode == mode_fail_from && step.number >= shim.step))
    step.error = shim.error;
  if (step.error) record("failed", path, call, 0, NULL, 0);
  return step;
}

/* Journals a step that succeeded, and ends the process if it is to end after it. */
static void leave(struct step step, const char* call, const char* path) {
  if (shim.mode == mode_kill_after && step.number == shim.step) die(call, path);
  if (at_point("after", call, path)) die(call, path);
  pthread_mutex_unlock(&lock);
}

static int refuse(struct step step) {
  pthread_mutex_unlock(&lock);
  errno = step.error;
  return -1;
}

#define FILE_STEP(CALL, PATH, OTHER, DOIT)                      \
  struct step step = enter(CALL, PATH);                         \
  if (step.middle) die(CALL, PATH);                             \
  if (step.error) return refuse(step);                          \
  const int result = DOIT;                                      \
  const int kept = errno;                                       \
  if (result >= 0) record(CALL, PATH, OTHER, 0, NULL, 0);       \
  else record("refused", PATH, CALL, 0, NULL, 0);               \
  leave(step, CALL, PATH);                                      \
  errno = kept;                                                 \
  return result

static int opened(int folder, const char* name, int flags, mode_t mode) {
  char path[PATH_MAX];
  absolute(folder, name, path);
  const int writes = (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC));
  if (!writes || (flags & O_TMPFILE) == O_TMPFILE || !counts(path))
    return (int)syscall(SYS_openat, folder, name, flags, mode);
  const char* call = flags & O_TRUNC ? "opentrunc" : "open";
  FILE_STEP(call, path, NULL, (int)syscall(SYS_openat, folder, name, flags, mode));
}

static mode_t mode_argument(int flags, va_list arguments) {
  return (flags & O_CREAT) || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(arguments, mode_t) : 0;
}

#define OPEN_BODY(FOLDER)                       \
  va_list arguments;                            \
  va_start(arguments, flags);                   \
  const mode_t mode = mode_argument(flags, arguments); \
  va_end(arguments);                            \
  return opened(FOLDER, name, flags, mode)

int open(const char* name, int flags, ...) { OPEN_BODY(AT_FDCWD); }
int open64(const char* name, int flags, ...) { OPEN_BODY(AT_FDCWD); }
int openat(int folder, const char* name, int flags, ...) { OPEN_BODY(folder); }
int openat64(int folder, const char* name, int flags, ...) { OPEN_BODY(folder); }
int creat(const char* name, mode_t mode) { return opened(AT_FDCWD, name, O_WRONLY | O_CREAT | O_TRUNC, mode); }

static ssize_t written(int descriptor, const void* bytes, size_t length, off_t offset, int positioned) {
  char path[PATH_MAX];
  path_of(descriptor, path);
  struct step step = enter("write", path);
  if (step.error) return refuse(step);
  const size_t allowed = step.middle ? length / 2 : length;
  const off_t place = positioned ? offset : lseek(descriptor, 0, SEEK_CUR);
  const ssize_t result = positioned ? (ssize_t)syscall(SYS_pwrite64, descriptor, bytes, allowed, offset)
                                    : (ssize_t)syscall(SYS_write, descriptor, bytes, allowed);
  const int kept = errno;
  if (result > 0) record("write", path, NULL, place, bytes, (size_t)result);
  if (step.middle) die("write", path);
  leave(step, "write", path);
  errno = kept;
  return result;
}

static int is_internet(int descriptor);
static ssize_t sent(int descriptor, const void* bytes, size_t length);

static int counts_descriptor(int descriptor) {
  pthread_once(&once, start);
  if (!shim.ready) return 0;
  char path[PATH_MAX];
  path_of(descriptor, path);
  return counts(path);
}

ssize_t write(int descriptor, const void* bytes, size_t length) {
  if (counts_descriptor(descriptor)) return written(descriptor, bytes, length, 0, 0);
  if (is_internet(descriptor)) return sent(descriptor, bytes, length);
  return (ssize_t)syscall(SYS_write, descriptor, bytes, length);
}
ssize_t pwrite(int descriptor, const void* bytes, size_t length, off_t offset) {
  if (counts_descriptor(descriptor)) return written(descriptor, bytes, length, offset, 1);
  return (ssize_t)syscall(SYS_pwrite64, descriptor, bytes, length, offset);
}
ssize_t pwrite64(int descriptor, const void* bytes, size_t length, off64_t offset) {
  return pwrite(descriptor, bytes, length, offset);
}
ssize_t writev(int descriptor, const struct iovec* parts, int count) {
  if (!counts_descriptor(descriptor)) return (ssize_t)syscall(SYS_writev, descriptor, parts, count);
  ssize_t total = 0;
  for (int i = 0; i < count; ++i) {
    const ssize_t result = written(descriptor, parts[i].iov_base, parts[i].iov_len, 0, 0);
    if (result < 0) return total ? total : -1;
    total += result;
    if ((size_t)result < parts[i].iov_len) break;
  }
  return total;
}

int fsync(int descriptor) {
  char path[PATH_MAX];
  path_of(descriptor, path);
  if (!counts(path)) return (int)syscall(SYS_fsync, descriptor);
  FILE_STEP("fsync", path, NULL, (int)syscall(SYS_fsync, descriptor));
}
int fdatasync(int descriptor) {
  char path[PATH_MAX];
  path_of(descriptor, path);
  if (!counts(path)) return (int)syscall(SYS_fdatasync, descriptor);
  FILE_STEP("fsync", path, NULL, (int)syscall(SYS_fdatasync, descriptor));
}
int ftruncate(int descriptor, off_t length) {
  char path[PATH_MAX];
  path_of(descriptor, path);
  if (!counts(path)) return (int)syscall(SYS_ftruncate, descriptor, length);
  struct step step = enter("truncate", path);
  if (step.middle) die("truncate", path);
  if (step.error) return refuse(step);
  const int result = (int)syscall(SYS_ftruncate, descriptor, length);
  if (result == 0) record("truncate", path, NULL, length, NULL, 0);
  leave(step, "truncate", path);
  return result;
}
int ftruncate64(int descriptor, off64_t length) { return ftruncate(descriptor, length); }

/* Room that is made beyond the end of a file is a longer file; any other room changes nothing that is read back. */
int fallocate(int descriptor, int mode, off_t offset, off_t length) {
  char path[PATH_MAX];
  path_of(descriptor, path);
  if (!counts(path)) return (int)syscall(SYS_fallocate, descriptor, mode, offset, length);
  struct step step = enter("allocate", path);
  if (step.middle) die("allocate", path);
  if (step.error) return refuse(step);
  const int result = (int)syscall(SYS_fallocate, descriptor, mode, offset, length);
  const int kept = errno;
  struct stat status;
  if (result == 0 && fstat(descriptor, &status) == 0) record("truncate", path, NULL, status.st_size, NULL, 0);
  leave(step, "allocate", path);
  errno = kept;
  return result;
}
int fallocate64(int descriptor, int mode, off64_t offset, off64_t length) {
  return fallocate(descriptor, mode, offset, length);
}
/* This one answers its error instead of leaving it in errno. */
int posix_fallocate(int descriptor, off_t offset, off_t length) {
  return fallocate(descriptor, 0, offset, length) == 0 ? 0 : errno;
}
int posix_fallocate64(int descriptor, off64_t offset, off64_t length) {
  return posix_fallocate(descriptor, offset, length);
}

/* Journals bytes that the kernel copied into a file, as if they had been written. */
static void record_copied(const char* path, off_t offset, size_t length) {
  if (shim.journal < 0 || length == 0) return;
  char* bytes = malloc(length);
  if (!bytes) abort();
  const int reader = (int)syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC, 0);
  const ssize_t taken = reader < 0 ? -1 : (ssize_t)syscall(SYS_pread64, reader, bytes, length, offset);
  if (taken > 0) record("write", path, NULL, offset, bytes, (size_t)taken);
  if (reader >= 0) syscall(SYS_close, reader);
  free(bytes);
}

ssize_t copy_file_range(int from, off64_t* from_offset, int to, off64_t* to_offset, size_t length, unsigned int flags) {
  char path[PATH_MAX];
  path_of(to, path);
  if (!counts(path)) return (ssize_t)syscall(SYS_copy_file_range, from, from_offset, to, to_offset, length, flags);
  struct step step = enter("write", path);
  if (step.error) return refuse(step);
  const off_t place = to_offset ? *to_offset : lseek(to, 0, SEEK_CUR);
  const size_t allowed = step.middle ? length / 2 : length;
  const ssize_t result =
      (ssize_t)syscall(SYS_copy_file_range, from, from_offset, to, to_offset, allowed, flags);
  const int kept = errno;
  if (result > 0) record_copied(path, place, (size_t)result);
  if (step.middle) die("write", path);
  leave(step, "write", path);
  errno = kept;
  return result;
}

ssize_t sendfile(int to, int from, off_t* offset, size_t length) {
  char path[PATH_MAX];
  path_of(to, path);
  if (!counts(path)) return (ssize_t)syscall(SYS_sendfile, to, from, offset, length);
  struct step step = enter("write", path);
  if (step.error) return refuse(step);
  const off_t place = lseek(to, 0, SEEK_CUR);
  const ssize_t result = (ssize_t)syscall(SYS_sendfile, to, from, offset, step.middle ? length / 2 : length);
  const int kept = errno;
  if (result > 0) record_copied(path, place, (size_t)result);
  if (step.middle) die("write", path);
  leave(step, "write", path);
  errno = kept;
  return result;
}
ssize_t sendfile64(int to, int from, off64_t* offset, size_t length) { return sendfile(to, from, offset, length); }

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned int flags) {
  char source[PATH_MAX], path[PATH_MAX];
  absolute(from_folder, from, source);
  absolute(to_folder, to, path);
  if (!counts(path)) return (int)syscall(SYS_renameat2, from_folder, from, to_folder, to, flags);
  struct step step = enter("rename", path);
  if (step.middle) die("rename", path);
  if (step.error) return refuse(step);
  const int result = (int)syscall(SYS_renameat2, from_folder, from, to_folder, to, flags);
  const int kept = errno;
  if (result == 0) record("rename", path, source, 0, NULL, 0);
  else record("refused", path, "rename", 0, NULL, 0);
  leave(step, "rename", path);
  errno = kept;
  return result;
}
int renameat(int from_folder, const char* from, int to_folder, const char* to) {
  return renameat2(from_folder, from, to_folder, to, 0);
}
int rename(const char* from, const char* to) { return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0); }

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) {
  char source[PATH_MAX], path[PATH_MAX];
  absolute(from_folder, from, source);
  absolute(to_folder, to, path);
  if (!counts(path)) return (int)syscall(SYS_linkat, from_folder, from, to_folder, to, flags);
  FILE_STEP("link", path, source, (int)syscall(SYS_linkat, from_folder, from, to_folder, to, flags));
}
int link(const char* from, const char* to) { return linkat(AT_FDCWD, from, AT_FDCWD, to, 0); }

int unlinkat(int folder, const char* name, int flags) {
  char path[PATH_MAX];
  absolute(folder, name, path);
  if (!counts(path)) return (int)syscall(SYS_unlinkat, folder, name, flags);
  const char* call = flags & AT_REMOVEDIR ? "rmdir" : "unlink";
  FILE_STEP(call, path, NULL, (int)syscall(SYS_unlinkat, folder, name, flags));
}
int unlink(const char* name) { return unlinkat(AT_FDCWD, name, 0); }
int rmdir(const char* name) { return unlinkat(AT_FDCWD, name, AT_REMOVEDIR); }

int mkdirat(int folder, const char* name, mode_t mode) {
  char path[PATH_MAX];
  absolute(folder, name, path);
  if (!counts(path)) return (int)syscall(SYS_mkdirat, folder, name, mode);
  FILE_STEP("mkdir", path, NULL, (int)syscall(SYS_mkdirat, folder, name, mode));
}
int mkdir(const char* name, mode_t mode) { return mkdirat(AT_FDCWD, name, mode); }

#define NETWORK_STEP(CALL, DOIT)                   \
  struct step step = enter(CALL, "");              \
  if (step.middle) die(CALL, "");                  \
  if (step.error) step.error = ECONNRESET;         \
  if (step.error) return refuse(step);             \
  const __typeof__(DOIT) result = DOIT;            \
  const int kept = errno;                          \
  record(CALL, "", NULL, 0, NULL, 0);              \
  leave(step, CALL, "");                           \
  errno = kept;                                    \
  return result

int connect(int descriptor, const struct sockaddr* address, socklen_t length) {
  if (!address || (address->sa_family != AF_INET && address->sa_family != AF_INET6) || !is_socket(descriptor))
    return REAL(connect)(descriptor, address, length);
  NETWORK_STEP("connect", REAL(connect)(descriptor, address, length));
}

static int is_internet(int descriptor) {
  struct sockaddr_storage address;
  socklen_t length = sizeof address;
  return is_socket(descriptor) && getsockname(descriptor, (struct sockaddr*)&address, &length) == 0 &&
         (address.ss_family == AF_INET || address.ss_family == AF_INET6);
}
/* What is sent in the middle of which the process ends, goes out in half. */
static ssize_t sent_with(int descriptor, const void* bytes, size_t length, int flags) {
  struct step step = enter("send", "");
  if (step.error) step.error = ECONNRESET;
  if (step.error) return refuse(step);
  const size_t allowed = step.middle ? length / 2 : length;
  const ssize_t result = (ssize_t)syscall(SYS_sendto, descriptor, bytes, allowed, flags, NULL, 0);
  const int kept = errno;
  record("send", "", NULL, 0, NULL, 0);
  if (step.middle) die("send", "");
  leave(step, "send", "");
  errno = kept;
  return result;
}
/* The program's network library writes to its sockets as to files. */
static ssize_t sent(int descriptor, const void* bytes, size_t length) { return sent_with(descriptor, bytes, length, 0); }
ssize_t send(int descriptor, const void* bytes, size_t length, int flags) {
  if (!is_internet(descriptor)) return REAL(send)(descriptor, bytes, length, flags);
  return sent_with(descriptor, bytes, length, flags);
}
ssize_t sendmsg(int descriptor, const struct msghdr* message, int flags) {
  if (!is_internet(descriptor)) return REAL(sendmsg)(descriptor, message, flags);
  NETWORK_STEP("send", REAL(sendmsg)(descriptor, message, flags));
}

/* Only a read that finds something is a step: a socket that has nothing yet is asked again and again. */
static int has_arrived(int descriptor) {
  char byte;
  return syscall(SYS_recvfrom, descriptor, &byte, 1, MSG_PEEK | MSG_DONTWAIT, NULL, NULL) >= 0;
}
static int counts_arrival(int descriptor) { return is_internet(descriptor) && has_arrived(descriptor); }

ssize_t recv(int descriptor, void* bytes, size_t length, int flags) {
  if ((flags & MSG_PEEK) || !counts_arrival(descriptor))
    return (ssize_t)syscall(SYS_recvfrom, descriptor, bytes, length, flags, NULL, NULL);
  NETWORK_STEP("recv", (ssize_t)syscall(SYS_recvfrom, descriptor, bytes, length, flags, NULL, NULL));
}
ssize_t recvmsg(int descriptor, struct msghdr* message, int flags) {
  if ((flags & MSG_PEEK) || !counts_arrival(descriptor)) return REAL(recvmsg)(descriptor, message, flags);
  NETWORK_STEP("recv", REAL(recvmsg)(descriptor, message, flags));
}
ssize_t read(int descriptor, void* bytes, size_t length) {
  if (!counts_arrival(descriptor)) return (ssize_t)syscall(SYS_read, descriptor, bytes, length);
  NETWORK_STEP("recv", (ssize_t)syscall(SYS_read, descriptor, bytes, length));
}
