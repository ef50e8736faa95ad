#pragma once

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Browser/BridgeWire.h"

#include <string>

namespace pacelet::bridge {

/// Carries frames between a browser and the program, in both directions and without reading them.
/// The program may come and go; while it is away, the bridge sleeps. What the browser says then is
/// for nobody, and of a frame that was cut off nothing reaches the other side of a later one.
class Relay {
public:
    /// The browser's streams stay the caller's; `folder` is where the program's socket stands.
    Relay(int fromBrowser, int toBrowser, std::string folder);

    /// Until the browser has closed its end. False when the folder cannot be used or watched.
    bool run();

private:
    bool waitForWork();
    void connect();
    void disconnect();

    // Each moves what can be moved now; false when the browser's end is closed or speaks nonsense.
    bool readBrowser();
    bool writeBrowser();
    void readProgram();
    void writeProgram();
    bool readEvents();

    /// Adds what is for the program of these bytes to `forProgram_`.
    bool sort(std::string_view bytes);

    int browserIn_;
    int browserOut_;
    std::string folder_;
    Descriptor events_;  ///< of the folder
    Descriptor program_; ///< not open while the program is away

    Linux::BridgeWire::FrameReader requests_{Linux::BridgeWire::longestRequest};
    std::string forBrowser_;
    std::string forProgram_;

    // Where the browser's stream stands: in a header, or so many bytes before the next one.
    std::string header_;
    std::size_t left_ = 0;
    bool isWanted_ = false; ///< the frame that has begun goes to the program
};

} // namespace pacelet::bridge
