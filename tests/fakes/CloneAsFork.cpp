// Linked into every test under the thread sanitizer.
//
// QProcess starts programs through clone(CLONE_VM | CLONE_VFORK). The sanitizer takes that for a
// fork: in the child it marks the thread as one whose locks and reports are to be ignored, and as
// the child shares our memory, the mark stays. From the first QProcess on, the main thread's locks
// go unseen, so that whatever it hands to another thread looks like a race, and its own races, too.
// So the child gets a memory of its own, as the sanitizer itself does it to vfork().

#include <cstdarg>

#include <dlfcn.h>
#include <sched.h>

extern "C" int clone(int (*function)(void*), void* stack, int flags, void* argument, ...) {
    std::va_list more;
    va_start(more, argument);
    auto* const parent = va_arg(more, pid_t*);
    auto* const storage = va_arg(more, void*);
    auto* const child = va_arg(more, pid_t*);
    va_end(more);
    static auto* const sanitizers = reinterpret_cast<decltype(&clone)>(dlsym(RTLD_NEXT, "clone"));
    return sanitizers(function, stack, flags & ~(CLONE_VM | CLONE_VFORK), argument, parent, storage,
                      child);
}
