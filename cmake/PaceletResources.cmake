# Glyphs and fonts that go into the program.

set(icons /usr/share/bootstrap-icons/svg)
set(inter /usr/share/fonts/opentype/inter)
set(pythons /usr/bin)
if(APPLE)
  # Where scripts/install.sh has them put.
  set(icons ${PROJECT_SOURCE_DIR}/build/mac-packages/node_modules/bootstrap-icons/icons)
  set(inter $ENV{HOME}/Library/Fonts)
  set(pythons /opt/homebrew/opt/fonttools/libexec/bin /usr/local/opt/fonttools/libexec/bin)
endif()
set(PACELET_ICON_FOLDER ${icons} CACHE PATH "The SVG files of Bootstrap Icons")
set(PACELET_INTER_FOLDER ${inter} CACHE PATH "The OpenType files of Inter")
# The interpreter that the font tools are installed for.
find_program(PACELET_PYTHON python3 PATHS ${pythons} NO_DEFAULT_PATH REQUIRED)

# Embeds each glyph of resources/symbols.json under its own name: resources/symbols holds those that
# we draw ourselves, all others come from the icon package.
function(pacelet_embed_symbols target)
  set(folder ${PROJECT_SOURCE_DIR}/resources)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${folder}/symbols.json)
  file(READ ${folder}/symbols.json symbols)
  string(JSON count LENGTH ${symbols})
  math(EXPR last "${count} - 1")
  set(copies "")
  foreach(index RANGE ${last})
    string(JSON name MEMBER ${symbols} ${index})
    string(JSON glyph GET ${symbols} ${name})
    set(source ${folder}/symbols/${glyph}.svg)
    if(NOT EXISTS ${source})
      set(source ${PACELET_ICON_FOLDER}/${glyph}.svg)
    endif()
    if(NOT EXISTS ${source})
      message(FATAL_ERROR "resources/symbols.json: there is no glyph \"${glyph}\" for \"${name}\"")
    endif()
    set(copy ${CMAKE_CURRENT_BINARY_DIR}/symbols/${name}.svg)
    configure_file(${source} ${copy} COPYONLY)
    list(APPEND copies ${copy})
  endforeach()
  qt_add_resources(${target} symbols PREFIX /symbols BASE ${CMAKE_CURRENT_BINARY_DIR}/symbols
    FILES ${copies})
  qt_add_resources(${target} icons PREFIX /icons BASE ${folder}/icons
    FILES ${folder}/icons/pacelet.svg)
endfunction()

# Makes and embeds the weights of the face whose digits have one width.
function(pacelet_embed_fonts target)
  set(script ${PROJECT_SOURCE_DIR}/resources/fonts/tabular-figures.py)
  set(fonts "")
  foreach(weight Regular SemiBold Bold)
    set(font ${CMAKE_CURRENT_BINARY_DIR}/PaceletFigures-${weight}.otf)
    set(source ${PACELET_INTER_FOLDER}/Inter-${weight}.otf)
    add_custom_command(OUTPUT ${font}
      COMMAND ${PACELET_PYTHON} ${script} ${source} ${font} "Pacelet Figures"
      DEPENDS ${script} ${source} VERBATIM)
    list(APPEND fonts ${font})
  endforeach()
  qt_add_resources(${target} fonts PREFIX /fonts BASE ${CMAKE_CURRENT_BINARY_DIR} FILES ${fonts})
endfunction()
