# The user guide beside the program: the pages as they are, and Tarvel.chm made from them where the
# compiler for help files is installed (package fp-utils). The target "guide" makes both.

set(TARVEL_GUIDE_LANGUAGES de en fr)
# The pages in the order of the contents; each language has them all.
set(TARVEL_GUIDE_PAGES
  index scannen messpunkte messen vorschlag indizes merkmale beurteilung ergebnisse protokoll austausch tasten)

set(guide_source ${PROJECT_SOURCE_DIR}/doc/guide)
set(guide_pages ${PROJECT_BINARY_DIR}/guide)
set(TARVEL_HELPFILE ${PROJECT_BINARY_DIR}/Tarvel.chm)

file(GLOB_RECURSE guide_files CONFIGURE_DEPENDS ${guide_source}/*)
add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/guide.stamp
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${guide_pages}
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${guide_source} ${guide_pages}
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/guide.stamp
  DEPENDS ${guide_files}
  COMMENT "Copying the user guide")

find_program(TARVEL_CHMCMD chmcmd DOC "Compiler for help files")
find_program(TARVEL_ICONV iconv DOC "Converter of character sets")
if(TARVEL_CHMCMD AND TARVEL_ICONV)
  set(guide_project ${PROJECT_BINARY_DIR}/helpfile)
  add_custom_command(OUTPUT ${TARVEL_HELPFILE}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${guide_project}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${guide_source} ${guide_project}
    COMMAND ${CMAKE_COMMAND} "-DGUIDE=${guide_project}" "-DICONV=${TARVEL_ICONV}"
      "-DLANGUAGES=${TARVEL_GUIDE_LANGUAGES}" "-DPAGES=${TARVEL_GUIDE_PAGES}"
      -P ${PROJECT_SOURCE_DIR}/cmake/GuideProject.cmake
    COMMAND ${CMAKE_COMMAND} -E chdir ${guide_project} ${TARVEL_CHMCMD} --no-html-scan --verbosity 2 Tarvel.hhp
    COMMAND ${CMAKE_COMMAND} -E copy ${guide_project}/Tarvel.chm ${TARVEL_HELPFILE}
    DEPENDS ${guide_files} ${CMAKE_CURRENT_LIST_FILE} ${CMAKE_CURRENT_LIST_DIR}/GuideProject.cmake
    COMMENT "Making the help file"
    VERBATIM)
  add_custom_target(guide DEPENDS ${PROJECT_BINARY_DIR}/guide.stamp ${TARVEL_HELPFILE})
else()
  message(STATUS "No chmcmd or iconv: the help opens as pages in the browser")
  set(TARVEL_HELPFILE "")
  add_custom_target(guide DEPENDS ${PROJECT_BINARY_DIR}/guide.stamp)
endif()
# The program looks for its help beside itself.
add_dependencies(tarvel guide)
