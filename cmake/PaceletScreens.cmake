# pacelet_qml_module(TARGET folders...) makes the QML files of these folders, and the QML types among the
# sources of the target, the module "Pacelet". Files are known by their names alone.
function(pacelet_qml_module target)
  set(files "")
  set(caches "")
  foreach(folder ${ARGN})
    file(GLOB found CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} ${folder}/*.qml)
    foreach(file ${found})
      get_filename_component(name ${file} NAME)
      set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${name})
      string(REGEX REPLACE "\\.qml$" "_qml" cache ${file})
      list(APPEND caches ${CMAKE_CURRENT_BINARY_DIR}/.rcc/qmlcache/${target}_${cache}.cpp)
    endforeach()
    list(APPEND files ${found})
    # The generated type registrations name the headers of QML types without their folder.
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
  endforeach()
  set_source_files_properties(Components/Theme.qml PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  # What is made from QML is bytecode with one big header each: compiled in one piece.
  set_source_files_properties(${caches} PROPERTIES UNITY_GROUP "${target}_qml")
  qt_add_qml_module(${target}
    URI Pacelet
    VERSION 1.0
    RESOURCE_PREFIX /qt/qml
    OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/Pacelet
    NO_PLUGIN
    DEPENDENCIES QtQuick
    QML_FILES ${files})
endfunction()
