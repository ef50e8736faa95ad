#pragma once

// Only what Hosts/Mac calls, after the public pages below
// developer.apple.com/documentation/network: nw_path_monitor_t, nw_path_t, nw_path_status_t,
// nw_interface_type_t.

#include <dispatch/dispatch.h>
#include <objc/NSObject.h>

@protocol OS_nw_path <NSObject>
@end
@protocol OS_nw_path_monitor <NSObject>
@end
typedef NSObject<OS_nw_path>* nw_path_t;
typedef NSObject<OS_nw_path_monitor>* nw_path_monitor_t;

typedef enum {
    nw_path_status_invalid = 0,
    nw_path_status_satisfied = 1,
    nw_path_status_unsatisfied = 2,
    nw_path_status_satisfiable = 3,
} nw_path_status_t;

typedef enum {
    nw_interface_type_other = 0,
    nw_interface_type_wifi = 1,
    nw_interface_type_cellular = 2,
    nw_interface_type_wired = 3,
    nw_interface_type_loopback = 4,
} nw_interface_type_t;

typedef void (^nw_path_monitor_update_handler_t)(nw_path_t path);

extern "C" {
nw_path_monitor_t nw_path_monitor_create(void) __attribute__((ns_returns_retained));
void nw_path_monitor_set_queue(nw_path_monitor_t monitor, dispatch_queue_t queue);
void nw_path_monitor_set_update_handler(nw_path_monitor_t monitor,
                                        nw_path_monitor_update_handler_t update_handler);
void nw_path_monitor_start(nw_path_monitor_t monitor);
void nw_path_monitor_cancel(nw_path_monitor_t monitor);
nw_path_status_t nw_path_get_status(nw_path_t path);
bool nw_path_uses_interface_type(nw_path_t path, nw_interface_type_t interface_type);
bool nw_path_is_expensive(nw_path_t path);
}
