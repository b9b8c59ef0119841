# Writes project, contents and index of the help file from the pages in GUIDE. Titles are contents,
# headings are the index, so both follow the pages. Run by cmake -P with GUIDE, LANGUAGES, PAGES, ICONV.

cmake_minimum_required(VERSION 3.25)

set(name_de "Deutsch")
set(name_en "English")
set(name_fr "Français")

function(entry result name target)
  # The file format knows no entities but these.
  string(REPLACE "\"" "&quot;" name "${name}")
  set(${result}
    "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"${name}\"><param name=\"Local\" value=\"${target}\"></object>\n"
    PARENT_SCOPE)
endfunction()

# The viewers expect the character set of the system the format comes from.
function(write_sitemap file content)
  set(head "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\"></head><body>\n<object type=\"text/site properties\"></object>\n")
  file(WRITE ${GUIDE}/sitemap.utf8 "${head}<ul>\n${content}</ul>\n</body></html>\n")
  execute_process(COMMAND ${ICONV} -f UTF-8 -t WINDOWS-1252 ${GUIDE}/sitemap.utf8
    OUTPUT_FILE ${GUIDE}/${file} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${GUIDE}/sitemap.utf8)
endfunction()

set(contents "")
set(keywords "")
foreach(language IN LISTS LANGUAGES)
  set(chapter "")
  foreach(page IN LISTS PAGES)
    set(target ${language}/${page}.html)
    file(READ ${GUIDE}/${target} text)
    string(REPLACE ";" "," text "${text}")
    if(NOT text MATCHES "<title>([^<]*)</title>")
      message(FATAL_ERROR "${target} has no title")
    endif()
    entry(line "${CMAKE_MATCH_1}" ${target})
    if(page STREQUAL "index")
      entry(line "${name_${language}}" ${target})
      string(APPEND contents "${line}<ul>\n")
    else()
      string(APPEND contents "${line}")
    endif()
    string(REGEX MATCHALL "<h2 id=\"[^\"]*\">[^<]*" headings "${text}")
    foreach(heading IN LISTS headings)
      string(REGEX MATCH "<h2 id=\"([^\"]*)\">(.*)" heading "${heading}")
      entry(line "${CMAKE_MATCH_2} (${language})" "${target}#${CMAKE_MATCH_1}")
      string(APPEND keywords "${line}")
    endforeach()
  endforeach()
  string(APPEND contents "</ul>\n")
endforeach()
write_sitemap(Tarvel.hhc "${contents}")
write_sitemap(Tarvel.hhk "${keywords}")

file(GLOB_RECURSE files RELATIVE ${GUIDE} ${GUIDE}/*.html ${GUIDE}/*.css ${GUIDE}/*.png)
list(SORT files)
list(JOIN files "\n" files)
file(WRITE ${GUIDE}/Tarvel.hhp "[OPTIONS]
Compatibility=1.1 or later
Compiled file=Tarvel.chm
Contents file=Tarvel.hhc
Index file=Tarvel.hhk
Default topic=index.html
Default Window=main
Full-text search=Yes
Language=0x407 German
Title=Tarvel

[WINDOWS]
main=\"Tarvel\",\"Tarvel.hhc\",\"Tarvel.hhk\",\"index.html\",\"index.html\",,,,,0x63520,,0x10387e,,,,,,,,0

[FILES]
${files}
")
