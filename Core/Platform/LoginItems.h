#pragma once

namespace pacelet {

/// What the login-item service says of this program.
enum class LoginItemStatus { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

/// Starting the program at login. Belongs to the UI thread.
class LoginItems {
public:
    virtual ~LoginItems() = default;

    /// False when the service refused.
    virtual bool registerProgram() = 0;
    virtual bool unregisterProgram() = 0;
    virtual LoginItemStatus status() = 0;
};

} // namespace pacelet
