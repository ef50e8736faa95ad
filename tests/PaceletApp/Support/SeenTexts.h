#pragma once

#include <QQuickItem>

namespace pacelet {

/// Calls `visit` with every visible item below `item` that has a text of its own.
template<typename Visit>
void forEachText(QQuickItem& item, const Visit& visit) {
    if (!item.isVisible() || item.opacity() <= 0) {
        return;
    }
    if (item.inherits("QQuickText") && !item.property("text").toString().isEmpty()) {
        visit(item);
    }
    for (QQuickItem* const child : item.childItems()) {
        forEachText(*child, visit);
    }
}

} // namespace pacelet
