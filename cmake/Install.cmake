# Where things go when Tarvel is installed.
#
#   bin/tarvel            starts the program with a folder of the user's own
#   bin/tarvel-batch
#   lib/tarvel/tarvel     the program
#   share/tarvel          help file, pages of the guide, sample scan
#   share/…               desktop entry, description for software centres, icon, file types
#
# On Windows everything lies in one folder, as the program expects it.

if(WIN32)
  set(TARVEL_PROGRAM_DIR .)
  set(TARVEL_COMMAND_DIR .)
  set(TARVEL_DATA_DIR .)
else()
  include(GNUInstallDirs)
  set(TARVEL_PROGRAM_DIR lib/tarvel) # the launcher finds it from its own place
  set(TARVEL_COMMAND_DIR bin)
  set(TARVEL_DATA_DIR share/tarvel)
endif()

install(TARGETS tarvel RUNTIME DESTINATION ${TARVEL_PROGRAM_DIR})
if(TARGET tarvel-batch)
  install(TARGETS tarvel-batch RUNTIME DESTINATION ${TARVEL_COMMAND_DIR})
endif()

install(DIRECTORY doc/guide DESTINATION ${TARVEL_DATA_DIR})
if(TARVEL_HELPFILE)
  install(FILES ${TARVEL_HELPFILE} DESTINATION ${TARVEL_DATA_DIR})
endif()
install(FILES data/musterblatt.png DESTINATION ${TARVEL_DATA_DIR})

if(WIN32)
  install(FILES LICENSE DESTINATION .)
  return()
endif()

# Software centres load the pictures of a program from the web only.
set(TARVEL_SCREENSHOTS "https://tarvel.example/screenshots" CACHE STRING
  "Web folder that holds doc/guide/en/images, for the description in software centres")
string(TIMESTAMP TARVEL_RELEASE_DATE "%Y-%m-%d" UTC)
set(metainfo org.tarvel.tarvel.metainfo.xml)
configure_file(packaging/linux/${metainfo}.in ${metainfo} @ONLY)

install(PROGRAMS packaging/linux/tarvel DESTINATION bin)
install(FILES packaging/linux/tarvel.desktop DESTINATION share/applications)
install(FILES ${PROJECT_BINARY_DIR}/${metainfo} DESTINATION share/metainfo)
install(FILES packaging/linux/tarvel-mime.xml DESTINATION share/mime/packages RENAME tarvel.xml)
install(FILES data/icons/tarvel.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES LICENSE DESTINATION share/doc/tarvel RENAME copyright)
install(FILES doc/data-safety.md DESTINATION share/doc/tarvel)
file(GLOB manuals doc/*.1)
if(manuals)
  install(FILES ${manuals} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
