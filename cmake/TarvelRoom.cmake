# How a room of the house is built: the flags every target gets and the link line that says who may see whom.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(tarvel_flags INTERFACE)
target_compile_definitions(tarvel_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
  TARVEL_VERSION="${PROJECT_VERSION}")
if(MSVC)
  target_compile_options(tarvel_flags INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(tarvel_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion
    -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
  # Where several sources are compiled as one, one's own names are all in sight.
  if(NOT CMAKE_UNITY_BUILD)
    target_compile_options(tarvel_flags INTERFACE -Wshadow)
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(tarvel_flags INTERFACE -Wshadow=local -Wno-subobject-linkage)
  endif()
endif()
if(TARVEL_SANITIZE)
  # The assertions of the toolkit and of the standard library, which other builds leave out.
  target_compile_definitions(tarvel_flags INTERFACE QT_FORCE_ASSERTS _GLIBCXX_ASSERTIONS)
  target_compile_options(tarvel_flags INTERFACE -fsanitize=${TARVEL_SANITIZE}
    -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tarvel_flags INTERFACE -fsanitize=${TARVEL_SANITIZE})
endif()

# A room is reached as "room/header.h" through an include root of its own, so that a header of a
# room that is not on the link line cannot be included. Without symbolic links the roof is shared.
function(tarvel_include_root room)
  set(root ${PROJECT_BINARY_DIR}/include/${room})
  if(WIN32)
    set(root ${PROJECT_SOURCE_DIR}/src)
  else()
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${room} ${root}/${room} SYMBOLIC)
  endif()
  set(TARVEL_ROOT_${room} ${root} PARENT_SCOPE)
endfunction()

# tarvel_library(<room> <core|paint|forms> SOURCES … LINK …)
#   core  computes: Qt Core at most
#   paint paints onto any painter: Qt Gui at most
#   forms is what a person sees: Qt Widgets
function(tarvel_library room kind)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;LINK")
  tarvel_include_root(${room})
  set(target ${room}_${kind})
  add_library(${target} STATIC ${arg_SOURCES})
  target_include_directories(${target} PUBLIC ${TARVEL_ROOT_${room}})
  set(qt_core Qt6::Core)
  set(qt_paint Qt6::Gui)
  set(qt_forms Qt6::Widgets)
  target_link_libraries(${target} PUBLIC ${qt_${kind}} ${arg_LINK} PRIVATE tarvel_flags)
endfunction()

# tarvel_compile_alone(FILES …): where several sources are compiled as one, these are not, because
# names of their own stand in another, too.
function(tarvel_compile_alone)
  set_source_files_properties(${ARGV} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
