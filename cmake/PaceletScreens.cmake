# pacelet_qml(files...) adds .qml files of this folder to the module of all screens.
function(pacelet_qml)
  qt_target_qml_sources(pacelet_screens QML_FILES ${ARGN})
  set(caches "")
  foreach(file ${ARGN})
    string(REPLACE "." "_" name ${file})
    list(APPEND caches ${CMAKE_CURRENT_BINARY_DIR}/.rcc/qmlcache/pacelet_screens_${name}.cpp)
  endforeach()
  # Our warnings are for our own code, not for what is made from QML.
  set_source_files_properties(${caches} TARGET_DIRECTORY pacelet_screens
    PROPERTIES COMPILE_OPTIONS -w)
  # A rule that makes a file is known in its own folder alone, so a target there has to ask for it.
  get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  add_custom_target(pacelet_screens_${folder} DEPENDS ${caches})
  add_dependencies(pacelet_screens pacelet_screens_${folder})
endfunction()
