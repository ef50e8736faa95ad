# What the package alone brings, outside of its prefix: every browser's system folder gets told where
# the bridge stands, and Debian's browser finds the extension among those of the system.
foreach(folder chromium opt/chrome opt/edge)
  file(COPY ${CPACK_PACELET_EXTENSION}/app.pacelet.browser.json
    DESTINATION ${CPACK_TEMPORARY_DIRECTORY}/etc/${folder}/native-messaging-hosts)
endforeach()
set(extensions ${CPACK_TEMPORARY_DIRECTORY}/usr/share/chromium/extensions)
file(MAKE_DIRECTORY ${extensions})
file(CREATE_LINK ../../pacelet/browser-extension ${extensions}/pacelet SYMBOLIC)
