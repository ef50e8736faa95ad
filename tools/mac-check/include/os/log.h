#pragma once

// Only what Hosts/Mac calls, after the public page developer.apple.com/documentation/os/logging and
// the compiler's own page on __builtin_os_log_format (clang.llvm.org/docs/LanguageExtensions.html).

#include <os/object.h>
#include <stdint.h>

OS_OBJECT_DECL(os_log);

typedef uint8_t os_log_type_t;
enum : os_log_type_t { OS_LOG_TYPE_INFO = 0x01, OS_LOG_TYPE_ERROR = 0x10 };

extern "C" {
extern struct mach_header __dso_handle;
os_log_t os_log_create(const char* subsystem, const char* category) OS_OBJECT_RETURNS_RETAINED;
bool os_log_type_enabled(os_log_t log, os_log_type_t type);
void _os_log_impl(void* dso, os_log_t log, os_log_type_t type, const char* format, uint8_t* buffer,
                  uint32_t size);
}

#define os_log_with_type(log, type, format, ...)                                                   \
    do {                                                                                           \
        if (os_log_type_enabled(log, type)) {                                                      \
            static const char told[]                                                               \
                __attribute__((section("__TEXT,__oslogstring,cstring_literals"))) = format;        \
            uint8_t arguments[__builtin_os_log_format_buffer_size(format, ##__VA_ARGS__)];         \
            __builtin_os_log_format(arguments, format, ##__VA_ARGS__);                             \
            _os_log_impl(&__dso_handle, log, type, told, arguments, sizeof arguments);             \
        }                                                                                          \
    } while (0)
