#include "countedmemory.h"

#include <atomic>
#include <limits>
#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Of the sanitizers' runtime; gcc does not ship the header.
extern "C" {
size_t __sanitizer_get_allocated_size(const volatile void *block);
int __sanitizer_install_malloc_and_free_hooks(void (*taken)(const volatile void *block, size_t bytes),
                                              void (*given)(const volatile void *block));
}
#endif

namespace {

std::atomic<qint64> inUse{0};
std::atomic<qint64> highest{0};
std::atomic<qint64> mostAllowed{std::numeric_limits<qint64>::max()};

void add(size_t bytes)
{
    const qint64 now = inUse += static_cast<qint64>(bytes);
    qint64 before = highest;
    while (now > before && !highest.compare_exchange_weak(before, now)) { }
}

void subtract(size_t bytes)
{
    inUse -= static_cast<qint64>(bytes);
}

} // namespace

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

// A sanitizer has an allocator of its own, which tells of each call.
namespace {

void taken(const volatile void *, size_t bytes)
{
    add(bytes);
}

void given(const volatile void *block)
{
    subtract(__sanitizer_get_allocated_size(block));
}

const int installed = __sanitizer_install_malloc_and_free_hooks(&taken, &given);

} // namespace

#else

namespace {

bool isThere(size_t bytes)
{
    return inUse + static_cast<qint64>(bytes) <= mostAllowed;
}

} // namespace

// The program's own definitions hold for all libraries in it; the C library's stand behind these names.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *block);

void *malloc(size_t size)
{
    void *const block = isThere(size) ? __libc_malloc(size) : nullptr;
    add(malloc_usable_size(block));
    return block;
}

void *calloc(size_t count, size_t size)
{
    void *const block = isThere(count * size) ? __libc_calloc(count, size) : nullptr;
    add(malloc_usable_size(block));
    return block;
}

// While a block moves both the old and the new one are there.
void *realloc(void *old, size_t size)
{
    const size_t before = malloc_usable_size(old);
    void *const block = isThere(size) ? __libc_realloc(old, size) : nullptr;
    if (block != nullptr || size == 0) {
        add(malloc_usable_size(block));
        subtract(before);
    }
    return block;
}

void *memalign(size_t alignment, size_t size)
{
    void *const block = __libc_memalign(alignment, size);
    add(malloc_usable_size(block));
    return block;
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void **block, size_t alignment, size_t size)
{
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : 12;
}

void free(void *block)
{
    subtract(malloc_usable_size(block));
    __libc_free(block);
}
}

#endif

CountedMemory::CountedMemory()
    : m_atStart(inUse)
{
    highest = m_atStart;
}

CountedMemory::~CountedMemory()
{
    mostAllowed = std::numeric_limits<qint64>::max();
}

bool CountedMemory::limit(qint64 bytes)
{
    mostAllowed = m_atStart + bytes;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}

qint64 CountedMemory::held() const
{
    return inUse - m_atStart;
}

qint64 CountedMemory::peak() const
{
    return highest - m_atStart;
}
