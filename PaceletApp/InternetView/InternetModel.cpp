#include "PaceletApp/InternetView/InternetModel.h"

namespace pacelet {

InternetModel::InternetModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects} {}

} // namespace pacelet
