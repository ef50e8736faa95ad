// Qt comes without the sanitizer's instrumentation: it cannot see the locks inside Qt, and takes
// what these protect for races. Accesses from Qt's own code are therefore left out.

// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer gives the name.
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libQt6Core.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
