#pragma once

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Browser/BrowserLink.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace pacelet::Linux {

/// Listens for the bridges that browsers have started for our extension. Its thread sleeps while
/// none comes or goes. For one program of the user at a time: a socket that stands in the folder
/// already is replaced.
class BridgeServer {
public:
    /// `folder` is one of the user's own, and is made when it is not there; where it cannot be
    /// used, nobody ever connects. `changed` is called on the server's thread after one came or
    /// went.
    BridgeServer(const std::string& folder, std::function<void()> changed);
    ~BridgeServer();
    BridgeServer(const BridgeServer&) = delete;
    BridgeServer& operator=(const BridgeServer&) = delete;

    using Links = std::vector<std::shared_ptr<BrowserLink>>;

    /// The connections that stand, in the order in which they came.
    Links links() const;

private:
    void serve();
    bool waitForChange(const Links& links);
    void accept();

    std::function<void()> changed_;
    Descriptor stop_;
    Descriptor listener_;
    mutable std::mutex mutex_;
    Links links_;
    std::int64_t lastNumber_ = 0;
    std::thread thread_;
};

} // namespace pacelet::Linux
