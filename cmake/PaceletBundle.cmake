# pacelet_bundle(TARGET) makes a program the application of a Mac: Pacelet.app, with its property list,
# its icon and the catalog, signed for the machine that builds it and no other.
function(pacelet_bundle target)
  find_program(PACELET_RSVG rsvg-convert REQUIRED)
  find_program(PACELET_ICONUTIL iconutil REQUIRED)
  find_program(PACELET_CODESIGN codesign REQUIRED)

  set(drawing ${PROJECT_SOURCE_DIR}/resources/icons/pacelet.svg)
  set(icon_set ${CMAKE_CURRENT_BINARY_DIR}/Pacelet.iconset)
  file(MAKE_DIRECTORY ${icon_set})
  set(pictures "")
  foreach(size 16 32 128 256 512)
    foreach(scale 1 2)
      math(EXPR pixels "${size} * ${scale}")
      set(picture ${icon_set}/icon_${size}x${size}.png)
      if(scale EQUAL 2)
        set(picture ${icon_set}/icon_${size}x${size}@2x.png)
      endif()
      add_custom_command(OUTPUT ${picture}
        COMMAND ${PACELET_RSVG} --width ${pixels} --height ${pixels} --output ${picture} ${drawing}
        DEPENDS ${drawing} VERBATIM)
      list(APPEND pictures ${picture})
    endforeach()
  endforeach()
  set(icon ${CMAKE_CURRENT_BINARY_DIR}/Pacelet.icns)
  add_custom_command(OUTPUT ${icon}
    COMMAND ${PACELET_ICONUTIL} --convert icns --output ${icon} ${icon_set}
    DEPENDS ${pictures} VERBATIM)
  add_custom_target(pacelet_icon DEPENDS ${icon})
  add_dependencies(${target} pacelet_icon)

  configure_file(${PROJECT_SOURCE_DIR}/resources/mac/Info.plist.in
    ${CMAKE_CURRENT_BINARY_DIR}/Info.plist @ONLY)
  set(catalog ${PROJECT_SOURCE_DIR}/resources/processes.json)
  set_target_properties(${target} PROPERTIES
    MACOSX_BUNDLE ON
    OUTPUT_NAME Pacelet
    MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_BINARY_DIR}/Info.plist
    LINK_DEPENDS "${icon};${catalog};${CMAKE_CURRENT_BINARY_DIR}/Info.plist")
  set(resources $<TARGET_BUNDLE_CONTENT_DIR:${target}>/Resources)
  # The signature comes last: it covers everything that stands in the bundle.
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${resources}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${icon} ${catalog} ${resources}
    COMMAND ${PACELET_CODESIGN} --force --sign - $<TARGET_BUNDLE_DIR:${target}>
    VERBATIM)
endfunction()
