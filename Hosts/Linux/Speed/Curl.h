#pragma once

#include <curl/curl.h>

namespace pacelet::Linux {

/// libcurl, loaded by the first who asks for it: with all that it needs in turn it is a third of
/// the libraries of a program that seldom measures a line.
struct Curl {
    /// Set up for all threads. Throws `SpeedFailure` where the library is missing.
    static const Curl& library();

    decltype(&curl_global_init) globalInit;
    decltype(&curl_easy_init) easyInit;
    decltype(&curl_easy_cleanup) easyCleanup;
    decltype(&curl_easy_setopt) easySetopt;
    decltype(&curl_easy_getinfo) easyGetinfo;
    decltype(&curl_easy_strerror) easyStrerror;
    decltype(&curl_multi_init) multiInit;
    decltype(&curl_multi_cleanup) multiCleanup;
    decltype(&curl_multi_add_handle) multiAddHandle;
    decltype(&curl_multi_remove_handle) multiRemoveHandle;
    decltype(&curl_multi_perform) multiPerform;
    decltype(&curl_multi_poll) multiPoll;
    decltype(&curl_multi_info_read) multiInfoRead;
    decltype(&curl_multi_strerror) multiStrerror;
    decltype(&curl_slist_append) slistAppend;
    decltype(&curl_slist_free_all) slistFreeAll;
};

} // namespace pacelet::Linux
