#pragma once

#include "Core/Platform/LoginItems.h"

namespace pacelet::Mac {

/// The system's service of login items, for the application's own bundle.
class MacLoginItems final : public LoginItems {
public:
    bool registerProgram() override;
    bool unregisterProgram() override;
    LoginItemStatus status() override;
};

} // namespace pacelet::Mac
