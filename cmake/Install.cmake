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
  # The toolkit beside the program, as much of it as the program uses.
  set(qt ${QT6_INSTALL_PREFIX})
  foreach(module Core Gui Network PrintSupport Widgets Svg)
    if(TARGET Qt6::${module})
      install(FILES $<TARGET_FILE:Qt6::${module}> DESTINATION .)
    endif()
  endforeach()
  install(FILES ${qt}/plugins/platforms/qwindows.dll ${qt}/plugins/platforms/qoffscreen.dll
    DESTINATION platforms) # tarvel-batch paints off screen
  install(FILES ${qt}/plugins/styles/qwindowsvistastyle.dll DESTINATION styles)
  install(FILES ${qt}/plugins/imageformats/qgif.dll ${qt}/plugins/imageformats/qjpeg.dll
    ${qt}/plugins/imageformats/qtiff.dll DESTINATION imageformats)
  install(FILES ${qt}/plugins/imageformats/qsvg.dll DESTINATION imageformats OPTIONAL)
  set(TARVEL_QT_TRANSLATIONS ${qt}/translations CACHE PATH "Where qtbase_de.qm and qtbase_fr.qm are")
  install(FILES ${TARVEL_QT_TRANSLATIONS}/qtbase_de.qm ${TARVEL_QT_TRANSLATIONS}/qtbase_fr.qm
    DESTINATION translations)
  if(MINGW)
    foreach(runtime libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
      execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
        OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
      install(FILES ${file} DESTINATION .)
    endforeach()
  else()
    set(CMAKE_INSTALL_SYSTEM_RUNTIME_DESTINATION .)
    include(InstallRequiredSystemLibraries)
  endif()
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
