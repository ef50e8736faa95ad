#include "PaceletApp/BackgroundItemsView/BackgroundItemsModel.h"

namespace pacelet {

BackgroundItemsModel::BackgroundItemsModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects} {}

} // namespace pacelet
