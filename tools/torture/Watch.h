#pragma once

#include "tools/session/Session.h"
#include "tools/torture/Person.h"

#include <stdexcept>
#include <string>

namespace pacelet::torture {

/// What must hold does not. The text begins with the name of the invariant.
class Broken : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws `Broken` unless it holds.
void hold(bool holds, const std::string& invariant, const std::string& what);

/// Looks at the program from outside: what must hold of its windows at any moment.
namespace Watch {

/// From now on nothing that Qt complains of is lost.
void hearWarnings();

/// Throws `Broken` at the first thing that does not hold.
void look(Session& session);

} // namespace Watch

} // namespace pacelet::torture
