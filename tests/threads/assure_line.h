// The exact line basic::assure_failed prints for one check of the library, found by reading the
// library's source, so tests never copy line numbers.
#pragma once

#include <string>

// `anchor` is text on or before the check (the function that makes it); the check is the first
// `BASIC_ASSURE(<expression>)` at or after it. Returns an empty string when there is none.
std::string assure_line(const std::string& source_file, const std::string& anchor,
                        const std::string& expression);

// Death tests run in a fresh process: the pool's idle workers make forking this one unsafe.
void use_threadsafe_death_tests();

// Whether a death test's exit status is that of abort(): SIGABRT on POSIX; the Windows C runtime
// exits with code 3 instead.
bool aborted(int exit_status);
