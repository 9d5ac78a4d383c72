// Layout items that the docking library 3.8 loses when a dock changes its area are no leaks of ours. A
// suppression would have to see that it was this library that had Qt make them; Qt has no frame pointers, and
// to find the callers of each allocation without them makes a test six times as slow. So they are found for
// items alone.

#include <QLayoutItem>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>
#include <map>
#include <mutex>
#include <new>

extern "C" {
int __sanitizer_get_ownership(const volatile void *memory);
size_t __sanitizer_get_allocated_size(const volatile void *memory);
void __sanitizer_malloc_hook(const volatile void *memory, size_t size);
}

namespace {

struct DockingItems {
    std::mutex mutex;
    std::map<const volatile void *, size_t> sizes;
};

DockingItems *dockingItems; // never deleted: the sanitizer tells of allocations up to the last

struct Range {
    ElfW(Addr) begin;
    ElfW(Addr) end;
};

// Where the code of the docking library stands in memory.
Range dockingLibrary()
{
    Range range{};
    dl_iterate_phdr(
        [](dl_phdr_info *library, size_t, void *found) {
            if (std::strstr(library->dlpi_name, "libqtadvanceddocking") == nullptr)
                return 0;
            for (int i = 0; i < library->dlpi_phnum; ++i) {
                const auto &segment = library->dlpi_phdr[i];
                const ElfW(Addr) begin = library->dlpi_addr + segment.p_vaddr;
                if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0)
                    *static_cast<Range *>(found) = {begin, begin + segment.p_memsz};
            }
            return 1;
        },
        &range);
    return range;
}

bool isCalledByDocking()
{
    static const Range library = dockingLibrary();
    void *frames[14]; // of which the first six are the sanitizer's and ours
    const int count = backtrace(frames, sizeof frames / sizeof *frames);
    return std::any_of(frames, frames + count, [](void *frame) {
        const auto address = reinterpret_cast<ElfW(Addr)>(frame);
        return address >= library.begin && address < library.end;
    });
}

// Allocations of the same sizes are not all items.
bool isItem(const void *memory)
{
    const void *vtable = nullptr;
    std::memcpy(&vtable, memory, sizeof vtable);
    Dl_info symbol;
    if (dladdr(vtable, &symbol) == 0 || symbol.dli_sname == nullptr)
        return false;
    return std::strcmp(symbol.dli_sname, "_ZTV11QWidgetItem") == 0
        || std::strcmp(symbol.dli_sname, "_ZTV13QWidgetItemV2") == 0;
}

// Frees the items that nobody has deleted. What they refer to is looked at as ever: it may be a leak of ours.
void freeDropped()
{
    for (const auto &[memory, size] : dockingItems->sizes) {
        if (__sanitizer_get_ownership(memory) != 0 && __sanitizer_get_allocated_size(memory) == size
            && isItem(const_cast<const void *>(memory)))
            ::operator delete(const_cast<void *>(memory));
    }
}

const int registered = [] {
    dockingItems = new DockingItems;
    return std::atexit(freeDropped);
}();

} // namespace

// The sanitizer calls this after each allocation.
void __sanitizer_malloc_hook(const volatile void *memory, size_t size)
{
    if (dockingItems == nullptr || (size != sizeof(QWidgetItem) && size != sizeof(QWidgetItemV2)))
        return;
    const bool byDocking = isCalledByDocking();
    const std::lock_guard lock(dockingItems->mutex);
    if (byDocking)
        dockingItems->sizes[memory] = size;
    else
        dockingItems->sizes.erase(memory); // of an item that was deleted
}
