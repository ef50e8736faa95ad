# The Debian package: `cpack` in the build folder, once the programs and icons are built.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pacelet)
set(CPACK_PACKAGE_VENDOR "The Pacelet team")
set(CPACK_PACKAGE_CONTACT "The Pacelet team <team@pacelet.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tells in plain English why this machine is slow")
set(CPACK_PACKAGE_DESCRIPTION
"Pacelet names the application that keeps the machine busy, explains what each
process is for, and offers the one step that helps, in a window and in a
coloured dot in the tray. It works locally and uploads nothing.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PACELET_WEBSITE})
# The libraries that the programs link are found by themselves. What is loaded by name is told here:
# the modules that the screens import, of which none brings another, the fonts, and whom to trust
# on the internet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_DEPENDS
  ca-certificates
  fonts-inter
  fonts-jetbrains-mono
  libcurl4
  qml6-module-qtqml
  qml6-module-qtqml-models
  qml6-module-qtqml-workerscript
  qml6-module-qtquick
  qml6-module-qtquick-templates
  qml6-module-qtquick-window)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)

set(CPACK_PACELET_EXTENSION ${PROJECT_SOURCE_DIR}/resources/browser-extension)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PaceletBrowsers.cmake)
set(conffiles "")
foreach(folder chromium opt/chrome opt/edge)
  string(APPEND conffiles "/etc/${folder}/native-messaging-hosts/app.pacelet.browser.json\n")
endforeach()
file(WRITE ${PROJECT_BINARY_DIR}/conffiles "${conffiles}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
