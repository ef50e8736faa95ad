#include "PaceletApp/ProcessesView/ProcessesModel.h"

namespace pacelet {

ProcessesModel::ProcessesModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects} {}

} // namespace pacelet
