// The few Windows calls the threading library and the engine use. On Windows this is the real API;
// elsewhere the same names are implemented over POSIX, so the library code has one spelling.
#pragma once

#if defined(_WIN32)

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <process.h>

#define DW_STDCALL __stdcall

#else

#include <cstddef>
#include <cstdint>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

#define DW_STDCALL

typedef void* HANDLE;
typedef std::uint32_t DWORD;
typedef std::uint16_t WORD;
typedef std::int32_t LONG;
typedef LONG* LPLONG;
typedef int BOOL;
typedef void* LPVOID;
typedef std::uintptr_t DWORD_PTR;
typedef DWORD_PTR* PDWORD_PTR;
typedef std::uint64_t DWORDLONG;
typedef const wchar_t* LPCWSTR;
typedef struct _SECURITY_ATTRIBUTES* LPSECURITY_ATTRIBUTES;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

constexpr DWORD INFINITE = 0xFFFFFFFFu;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFFu;

struct SYSTEM_INFO {
  WORD wProcessorArchitecture;
  WORD wReserved;
  DWORD dwPageSize;
  LPVOID lpMinimumApplicationAddress;
  LPVOID lpMaximumApplicationAddress;
  DWORD_PTR dwActiveProcessorMask;
  DWORD dwNumberOfProcessors;
  DWORD dwProcessorType;
  DWORD dwAllocationGranularity;
  WORD wProcessorLevel;
  WORD wProcessorRevision;
};
typedef SYSTEM_INFO* LPSYSTEM_INFO;

struct MEMORYSTATUSEX {
  DWORD dwLength;  // must be sizeof(MEMORYSTATUSEX), as on Windows
  DWORD dwMemoryLoad;
  DWORDLONG ullTotalPhys;
  DWORDLONG ullAvailPhys;
  DWORDLONG ullTotalPageFile;
  DWORDLONG ullAvailPageFile;
  DWORDLONG ullTotalVirtual;
  DWORDLONG ullAvailVirtual;
  DWORDLONG ullAvailExtendedVirtual;
};
typedef MEMORYSTATUSEX* LPMEMORYSTATUSEX;

// Only unnamed semaphores without security attributes are supported.
HANDLE CreateSemaphoreW(LPSECURITY_ATTRIBUTES attributes, LONG initial_count, LONG maximum_count,
                        LPCWSTR name);
BOOL ReleaseSemaphore(HANDLE semaphore, LONG release_count, LPLONG previous_count);
// Works on semaphores and thread handles; a thread handle is signalled once its thread has ended.
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);
BOOL CloseHandle(HANDLE handle);

// stack_size 0 takes the system default; any other size is raised to the POSIX minimum and
// rounded to whole pages. Returns 0 on failure.
std::uintptr_t _beginthreadex(void* security, unsigned stack_size,
                              unsigned(DW_STDCALL* start_address)(void*), void* argument,
                              unsigned init_flags, unsigned* thread_id);

void GetSystemInfo(LPSYSTEM_INFO info);
HANDLE GetCurrentProcess();
// Masks cover the first bits-of-DWORD_PTR processors, like one processor group on Windows.
BOOL GetProcessAffinityMask(HANDLE process, PDWORD_PTR process_mask, PDWORD_PTR system_mask);
BOOL GlobalMemoryStatusEx(LPMEMORYSTATUSEX status);
DWORD GetTickCount();

inline void YieldProcessor() {
#if defined(__x86_64__) || defined(__i386__)
  _mm_pause();
#elif defined(__aarch64__) || defined(__arm__)
  __asm__ __volatile__("yield");
#endif
}

// Test hooks, POSIX only. Every call that would enter the Windows kernel is counted, so tests can
// prove which operations stay in user space.
enum class dw_platform_call : int {
  create_semaphore,
  release_semaphore,
  wait,
  close_handle,
  begin_thread,
  process_affinity,
  count
};

// Kernel-level calls (semaphore create/release/wait, handle close, thread create/wait) made by
// the whole process, and by the calling thread alone.
std::uint64_t dw_platform_kernel_calls();
std::uint64_t dw_platform_thread_kernel_calls();
// Calls of one kind made by the whole process (counted whether or not they succeed).
std::uint64_t dw_platform_calls(dw_platform_call call);
// Makes the next call of this kind fail as the Windows call would (0 handle, FALSE, WAIT_FAILED),
// so tests can reach the library's checks of system-call results.
void dw_platform_fail_next(dw_platform_call call);

#endif
