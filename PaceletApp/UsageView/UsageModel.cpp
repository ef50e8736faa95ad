#include "PaceletApp/UsageView/UsageModel.h"

namespace pacelet {

UsageModel::UsageModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects} {}

} // namespace pacelet
