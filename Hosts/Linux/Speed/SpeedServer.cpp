#include "Hosts/Linux/Speed/SpeedServer.h"

#include "Hosts/Linux/Speed/StandardServer.h"

namespace pacelet::Linux {

std::string SpeedServer::standardConfiguration() {
    return standardSpeedServer;
}

} // namespace pacelet::Linux
