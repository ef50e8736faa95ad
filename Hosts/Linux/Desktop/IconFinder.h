#pragma once

#include "Hosts/Linux/Apps/DesktopCatalog.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// Where a desktop keeps its icons.
struct IconPlaces {
    std::vector<std::string> themeFolders;  ///< the "icons" folders, in order of precedence
    std::vector<std::string> looseFolders;  ///< folders of icons in no theme
    std::vector<std::string> settingsFiles; ///< files that name the theme in use, first one counts

    /// Beside the folders of the menu entries; the settings in the user's configuration folder.
    static IconPlaces from(const DesktopPlaces& places, const std::string& configFolder);
};

/// The file of the icon `name`, about `size` pixels wide: an absolute path as it stands; else from
/// the theme in use, the themes that it builds upon, "hicolor", the large desktops' own themes, and
/// at last from the loose icons. Within a theme the folder nearest in size counts. Nothing when
/// there is no PNG and no SVG.
std::optional<std::string> findIcon(const IconPlaces& places, std::string_view name, int size);

} // namespace pacelet::Linux
