# The environment every test runs in: sanitizer settings, the leak list for
# the system's own libraries, and OpenAL's null output (no sound card here).
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# intercept_tls_get_addr=0: the leak checker's record of the dynamic TLS of
# the GL driver's LLVM, when the game has run on its main thread beside a
# test script's thread, is sometimes garbage, and the checker then crashes
# at exit ("Tracer caught signal 11"); that TLS belongs to libraries whose
# leaks are suppressed anyway.
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:strict_string_checks=1:intercept_tls_get_addr=0
export LSAN_OPTIONS=suppressions=$here/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ALSOFT_DRIVERS=null
