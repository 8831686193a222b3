#include "Confinement.h"

#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kova {

namespace {

// A decoder needs a few megabytes; memory shared with the sound server is not counted.
constexpr rlim_t memory = 256 << 20;

// AddressSanitizer reserves terabytes. Clang and GCC announce it differently.
#ifdef __has_feature
constexpr bool isMemoryLimited = !__has_feature(address_sanitizer);
#elif defined __SANITIZE_ADDRESS__
constexpr bool isMemoryLimited = false;
#else
constexpr bool isMemoryLimited = true;
#endif

void limit(__rlimit_resource resource, rlim_t maximum) {
    const rlimit both{maximum, maximum};
    setrlimit(resource, &both);
}

// Access rights of later Landlock versions, which the headers may lack.
constexpr std::uint64_t truncate = 1U << 14;
constexpr std::uint64_t deviceControl = 1U << 15;

std::uint64_t handledRights(long version) {
    constexpr std::uint64_t firstVersion = 2 * LANDLOCK_ACCESS_FS_MAKE_SYM - 1;
    constexpr std::uint64_t reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
    return (firstVersion & ~reading) | (version >= 3 ? truncate : 0) | (version >= 5 ? deviceControl : 0);
}

void allow(int rules, const char *path, std::uint64_t rights) {
    landlock_path_beneath_attr rule{.allowed_access = rights, .parent_fd = open(path, O_PATH | O_CLOEXEC)};
    if (rule.parent_fd >= 0) {
        syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
        close(rule.parent_fd);
    }
}

void restrictFileSystem() {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) {
        return;
    }
    landlock_ruleset_attr attributes{};
    attributes.handled_access_fs = handledRights(version);
    const auto rules = static_cast<int>(
        syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0));
    if (rules < 0) {
        return;
    }
    const std::uint64_t all = attributes.handled_access_fs;
    allow(rules, "/dev/null", all & LANDLOCK_ACCESS_FS_WRITE_FILE); // of ALSA's type null
    allow(rules, "/dev/snd", all & (LANDLOCK_ACCESS_FS_WRITE_FILE | deviceControl));
    allow(rules, "/dev/shm",
          all & (LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG |
                 LANDLOCK_ACCESS_FS_REMOVE_FILE | truncate));
    syscall(SYS_landlock_restrict_self, rules, 0);
    close(rules);
}

} // namespace

void confine() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    limit(RLIMIT_CORE, 0);
    if (isMemoryLimited) {
        limit(RLIMIT_DATA, memory);
    }
    restrictFileSystem();
}

} // namespace kova
