// The line basic::assure_failed prints for one check of the library, found by reading the
// library's source, so tests never copy line numbers.
#pragma once

#include <gmock/gmock.h>

#include <string>

// The line of the check (0 when there is none): `anchor` is text on or before the check (the
// function that makes it); the check is the first `BASIC_ASSURE(<expression>)` at or after it.
int assure_check_line(const std::string& source_file, const std::string& anchor, const std::string& expression);

// The matcher accepts output holding
// "basic::assure_failed(<expression>, <file>, <line>)\n" where <file> is the source's path as the
// compiler was given it: absolute, or relative to the build folder when a compiler cache rewrote
// it, so only its end ("sources/<source_file>") is fixed. Fails to match anything when the source
// has no such check.
::testing::Matcher<const std::string&> assure_message(const std::string& source_file, const std::string& anchor,
                                                      const std::string& expression);

// Death tests run in a fresh process: the pool's idle workers make forking this one unsafe.
void use_threadsafe_death_tests();

// Whether a death test's exit status is that of abort(): SIGABRT on POSIX; the Windows C runtime
// exits with code 3 instead.
bool aborted(int exit_status);
