# pacelet_qml(files...) adds .qml files of this folder to the module of all screens.
function(pacelet_qml)
  qt_target_qml_sources(pacelet_screens QML_FILES ${ARGN})
  # Our warnings are for our own code, not for what is made from QML.
  foreach(file ${ARGN})
    string(REPLACE "." "_" name ${file})
    set_source_files_properties(
      ${CMAKE_CURRENT_BINARY_DIR}/.rcc/qmlcache/pacelet_screens_${name}.cpp
      TARGET_DIRECTORY pacelet_screens PROPERTIES COMPILE_OPTIONS -w)
  endforeach()
endfunction()
