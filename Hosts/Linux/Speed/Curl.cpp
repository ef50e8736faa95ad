#include "Hosts/Linux/Speed/Curl.h"

#include "Hosts/Linux/Speed/SpeedFailure.h"

#include <dlfcn.h>
#include <string>

namespace pacelet::Linux {

namespace {

/// Stays loaded: it has threads and settings of its own.
void* open() {
    void* const library = ::dlopen("libcurl.so.4", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw SpeedFailure{::dlerror()};
    }
    return library;
}

template<typename Function>
void find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(::dlsym(library, name));
    if (function == nullptr) {
        throw SpeedFailure{std::string{"libcurl has no "} + name};
    }
}

Curl load() {
    void* const library = open();
    Curl curl{};
    find(library, "curl_global_init", curl.globalInit);
    find(library, "curl_easy_init", curl.easyInit);
    find(library, "curl_easy_cleanup", curl.easyCleanup);
    find(library, "curl_easy_setopt", curl.easySetopt);
    find(library, "curl_easy_getinfo", curl.easyGetinfo);
    find(library, "curl_easy_strerror", curl.easyStrerror);
    find(library, "curl_multi_init", curl.multiInit);
    find(library, "curl_multi_cleanup", curl.multiCleanup);
    find(library, "curl_multi_add_handle", curl.multiAddHandle);
    find(library, "curl_multi_remove_handle", curl.multiRemoveHandle);
    find(library, "curl_multi_perform", curl.multiPerform);
    find(library, "curl_multi_poll", curl.multiPoll);
    find(library, "curl_multi_info_read", curl.multiInfoRead);
    find(library, "curl_multi_strerror", curl.multiStrerror);
    find(library, "curl_slist_append", curl.slistAppend);
    find(library, "curl_slist_free_all", curl.slistFreeAll);
    // It wants to be set up once, before all threads that use it.
    if (const CURLcode result = curl.globalInit(CURL_GLOBAL_DEFAULT); result != CURLE_OK) {
        throw SpeedFailure{curl.easyStrerror(result)};
    }
    return curl;
}

} // namespace

const Curl& Curl::library() {
    static const Curl curl = load();
    return curl;
}

} // namespace pacelet::Linux
