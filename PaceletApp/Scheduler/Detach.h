#pragma once

#include <QCoroTask>

namespace pacelet {

/// Lets a task run on by itself. It ends quietly when the scheduler closes; any other exception
/// that leaves it is a fault of the program, and stops it instead of being lost.
void detach(QCoro::Task<> task);

} // namespace pacelet
