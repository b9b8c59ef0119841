# tarvel_drawings(<target> <folder> <size>…): the drawings of data/<folder> as resources under
# /tarvel/<folder>. Where the toolkit cannot draw SVG, pictures of them stand there, one for each
# size in pixels: name-24.png.
function(tarvel_drawings target folder)
  file(GLOB drawings CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/data/${folder}/*.svg)
  if(TARGET Qt6::Svg)
    qt_add_resources(${target} tarvel_${folder} PREFIX /tarvel BASE ${PROJECT_SOURCE_DIR}/data
      FILES ${drawings})
    return()
  endif()
  find_program(TARVEL_RSVG rsvg-convert REQUIRED)
  set(pictures)
  foreach(drawing ${drawings})
    cmake_path(GET drawing STEM name)
    foreach(size ${ARGN})
      set(picture ${CMAKE_CURRENT_BINARY_DIR}/pictures/${folder}/${name}-${size}.png)
      add_custom_command(OUTPUT ${picture} DEPENDS ${drawing}
        COMMAND ${TARVEL_RSVG} --keep-aspect-ratio -w ${size} -h ${size} -o ${picture} ${drawing})
      list(APPEND pictures ${picture})
    endforeach()
  endforeach()
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/pictures/${folder})
  qt_add_resources(${target} tarvel_${folder} PREFIX /tarvel
    BASE ${CMAKE_CURRENT_BINARY_DIR}/pictures FILES ${pictures})
endfunction()

# tarvel_windows_resources(<target>): icon, version and manifest of a program for Windows.
function(tarvel_windows_resources target)
  if(NOT WIN32)
    return()
  endif()
  enable_language(RC)
  set(TARVEL_ICON ${PROJECT_SOURCE_DIR}/packaging/windows/tarvel.ico)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/tarvel.rc.in
    ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO)
  endif()
endfunction()
