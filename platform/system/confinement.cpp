// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A list of what is allowed: what decoders of pictures call in their own right is memory, threads, time and
// the files that are open already. Anything else fails as if it were not permitted, so that libraries that
// only try can go on; what nothing here ever tries ends the process.
#include "system/confinement.h"

#include "system/file_descriptor.h"

#include <linux/landlock.h>
#include <seccomp.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <memory>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lumora {
namespace {

struct FilterRelease
{
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, FilterRelease>;

constexpr std::array allowedCalls{
    // files that are open
    SCMP_SYS(read), SCMP_SYS(write), SCMP_SYS(readv), SCMP_SYS(writev), SCMP_SYS(pread64), SCMP_SYS(pwrite64),
    SCMP_SYS(lseek), SCMP_SYS(fstat), SCMP_SYS(newfstatat), SCMP_SYS(statx), SCMP_SYS(ftruncate),
    SCMP_SYS(close), SCMP_SYS(dup), SCMP_SYS(fcntl), SCMP_SYS(fadvise64), SCMP_SYS(recvmsg),
    SCMP_SYS(sendmsg), SCMP_SYS(poll), SCMP_SYS(ppoll),
    // memory
    SCMP_SYS(mmap), SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(mprotect), SCMP_SYS(madvise), SCMP_SYS(brk),
    SCMP_SYS(mbind), SCMP_SYS(set_mempolicy), SCMP_SYS(get_mempolicy),
    // threads of its own
    SCMP_SYS(futex), SCMP_SYS(set_robust_list), SCMP_SYS(rseq), SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity), SCMP_SYS(sched_setaffinity), SCMP_SYS(sched_getparam),
    SCMP_SYS(sched_getscheduler), SCMP_SYS(gettid), SCMP_SYS(getpid), SCMP_SYS(set_tid_address),
    SCMP_SYS(sigaltstack), SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn),
    SCMP_SYS(exit), SCMP_SYS(exit_group),
    // time and chance
    SCMP_SYS(clock_gettime), SCMP_SYS(clock_getres), SCMP_SYS(clock_nanosleep), SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday), SCMP_SYS(time), SCMP_SYS(getrandom), SCMP_SYS(getrusage), SCMP_SYS(sysinfo),
    SCMP_SYS(uname), SCMP_SYS(prlimit64), SCMP_SYS(getrlimit)};

constexpr std::array deadlyCalls{
    SCMP_SYS(execve),           SCMP_SYS(execveat),         SCMP_SYS(fork), SCMP_SYS(vfork),
    SCMP_SYS(socket),           SCMP_SYS(connect),          SCMP_SYS(bind), SCMP_SYS(ptrace),
    SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev)};

bool allowThreads(void* filter)
{
    // Programs ask by the newer call first, whose arguments a filter cannot see.
    const auto threadFlag = static_cast<scmp_datum_t>(CLONE_THREAD);
    return seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0 &&
           seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1,
                            SCMP_A0(SCMP_CMP_MASKED_EQ, threadFlag, threadFlag)) == 0;
}

// Signals to itself only, as abort() sends them.
bool allowOwnSignals(void* filter)
{
    return seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(tgkill), 1,
                            SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(::getpid()))) == 0;
}

// Names of threads, for whoever looks with a debugger.
bool allowNames(void* filter)
{
    return seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(prctl), 1,
                            SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(PR_SET_NAME))) == 0;
}

bool filterCalls()
{
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    if (!filter) return false;
    for (const int call : allowedCalls) {
        if (seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) != 0) return false;
    }
    for (const int call : deadlyCalls) {
        if (seccomp_rule_add(filter.get(), SCMP_ACT_KILL_PROCESS, call, 0) != 0) return false;
    }
    return allowThreads(filter.get()) && allowOwnSignals(filter.get()) && allowNames(filter.get()) &&
           seccomp_load(filter.get()) == 0;
}

// By numbers: the C library has no functions for these.
long landlockVersion()
{
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
}

// Every access of the first version, which all kernels with Landlock know, and no path that allows any.
bool filterFiles()
{
    constexpr std::uint64_t everyAccess = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1;
    const landlock_ruleset_attr rules{.handled_access_fs = everyAccess};
    const FileDescriptor set(
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0)));
    return set.isOpen() && ::syscall(SYS_landlock_restrict_self, set.get(), 0) == 0;
}

} // namespace

std::string Confinement::description() const
{
    std::string text = hasCallFilter ? "system call filter" : "";
    if (hasFileFilter) text += text.empty() ? "Landlock" : ", Landlock";
    return text.empty() ? "none" : text;
}

Confinement confinementOffered()
{
    return {.hasCallFilter = ::prctl(PR_GET_SECCOMP) >= 0, .hasFileFilter = landlockVersion() > 0};
}

Confinement confineProcess()
{
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    Confinement confinement;
    confinement.hasFileFilter = landlockVersion() > 0 && filterFiles();
    confinement.hasCallFilter = filterCalls();
    return confinement;
}

} // namespace lumora
