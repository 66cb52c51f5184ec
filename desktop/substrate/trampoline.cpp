// Trampolines for x86-64: pages of equal stubs, each of which finds its method in the page of data behind it.
#include "desktop/substrate/trampoline.h"

#include <sys/mman.h>

#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <tuple>

#if defined(__x86_64__)
extern "C" {
__attribute__((visibility("hidden"))) void substrateTraceEntry();
/// Called by the entry below with what it saved. Answers the implementation to go on to.
__attribute__((visibility("hidden"), used)) IMP substrateTraceRecord(const substrate::trace::SavedRegisters* registers,
                                                                     const std::uint64_t* stack,
                                                                     const substrate::trace::TracedMethod* method) {
    substrate::trace::recordCall(*method, *registers, stack);
    return method->implementation;
}
}

// The stub arrives with r11 at its pair of data: this entry, and the method.
asm(R"(
    .text
    .p2align 4
    .hidden substrateTraceEntry
    .globl substrateTraceEntry
    .type substrateTraceEntry, @function
substrateTraceEntry:
    .cfi_startproc
    endbr64
    pushq %rbp
    .cfi_def_cfa_offset 16
    .cfi_offset %rbp, -16
    movq %rsp, %rbp
    .cfi_def_cfa_register %rbp
    subq $208, %rsp
    movq %rdi, 0(%rsp)
    movq %rsi, 8(%rsp)
    movq %rdx, 16(%rsp)
    movq %rcx, 24(%rsp)
    movq %r8, 32(%rsp)
    movq %r9, 40(%rsp)
    movq %rax, 48(%rsp)
    movq %r10, 56(%rsp)
    movups %xmm0, 64(%rsp)
    movups %xmm1, 80(%rsp)
    movups %xmm2, 96(%rsp)
    movups %xmm3, 112(%rsp)
    movups %xmm4, 128(%rsp)
    movups %xmm5, 144(%rsp)
    movups %xmm6, 160(%rsp)
    movups %xmm7, 176(%rsp)
    movq %rsp, %rdi
    leaq 16(%rbp), %rsi
    movq 8(%r11), %rdx
    call substrateTraceRecord
    movq %rax, %r11
    movq 0(%rsp), %rdi
    movq 8(%rsp), %rsi
    movq 16(%rsp), %rdx
    movq 24(%rsp), %rcx
    movq 32(%rsp), %r8
    movq 40(%rsp), %r9
    movq 48(%rsp), %rax
    movq 56(%rsp), %r10
    movups 64(%rsp), %xmm0
    movups 80(%rsp), %xmm1
    movups 96(%rsp), %xmm2
    movups 112(%rsp), %xmm3
    movups 128(%rsp), %xmm4
    movups 144(%rsp), %xmm5
    movups 160(%rsp), %xmm6
    movups 176(%rsp), %xmm7
    leave
    .cfi_def_cfa %rsp, 8
    jmp *%r11
    .cfi_endproc
    .size substrateTraceEntry, .-substrateTraceEntry
)");
#endif

namespace substrate::trace {

#if defined(__x86_64__)
namespace {

constexpr std::size_t pageSize = 4096;
constexpr std::size_t stubSize = 16;

struct StubData {
    void (*entry)();
    const TracedMethod* method;
};
static_assert(sizeof(StubData) == stubSize, "a stub and its data lie one page apart");

/// lea r11, [rip + one page - its own length]; jmp [r11]
constexpr unsigned char stubCode[stubSize] = {0x4c, 0x8d, 0x1d, 0xf9, 0x0f, 0x00, 0x00, 0x41,
                                              0xff, 0x23, 0xcc, 0xcc, 0xcc, 0xcc, 0xcc, 0xcc};

class Trampolines {
  public:
    IMP find(const TracedMethod& method) {
        std::lock_guard lock(mutex_);
        auto address = reinterpret_cast<std::uintptr_t>(method.implementation);
        if (pages_.contains(address & ~(pageSize - 1))) return method.implementation;
        auto [known, isNew] = stubs_.try_emplace({address, method.resultInMemory, method.types}, nullptr);
        if (isNew) known->second = make(method);
        return known->second ? known->second : method.implementation;
    }

  private:
    IMP make(const TracedMethod& method) {
        if (used_ == pageSize / stubSize && !addPage()) return nullptr;
        unsigned char* stub = page_ + used_++ * stubSize;
        auto* data = new (stub + pageSize) StubData;
        data->entry = &substrateTraceEntry;
        data->method = &methods_.emplace_back(method);
        return reinterpret_cast<IMP>(stub);
    }

    bool addPage() {
        void* memory = mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) return false;
        auto* code = static_cast<unsigned char*>(memory);
        for (std::size_t at = 0; at < pageSize; at += stubSize) std::memcpy(code + at, stubCode, stubSize);
        if (mprotect(code, pageSize, PROT_READ | PROT_EXEC) != 0) {
            munmap(memory, 2 * pageSize);
            return false;
        }
        page_ = code;
        used_ = 0;
        pages_.insert(reinterpret_cast<std::uintptr_t>(code));
        return true;
    }

    std::mutex mutex_;
    std::map<std::tuple<std::uintptr_t, bool, const char*>, IMP> stubs_;
    std::set<std::uintptr_t> pages_;
    std::deque<TracedMethod> methods_;  // a deque, because the stubs hold addresses
    unsigned char* page_ = nullptr;
    std::size_t used_ = pageSize / stubSize;
};

}  // namespace

bool trampolinesAreSupported() { return true; }

IMP trampolineFor(const TracedMethod& method) {
    static auto* trampolines = new Trampolines;  // methods are sent until the very end of the process
    return trampolines->find(method);
}

#else

bool trampolinesAreSupported() { return false; }

IMP trampolineFor(const TracedMethod& method) { return method.implementation; }

#endif

}  // namespace substrate::trace
