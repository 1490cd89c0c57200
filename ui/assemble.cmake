# Assembles the factory UI into the one file the set loads by file URL: every
# <link rel="stylesheet" href="X"> and <script src="X"></script> line of the skeleton
# is replaced by the named file of its directory, inline. The skeleton with its files
# also opens as it is in a browser, for work on the page.
#   cmake -DSKELETON=ui/src/factory-ui.html -DOUTPUT=factory-ui.html -P ui/assemble.cmake
cmake_minimum_required(VERSION 3.25)
if(NOT SKELETON OR NOT OUTPUT)
  message(FATAL_ERROR "usage: cmake -DSKELETON=<page> -DOUTPUT=<file> -P assemble.cmake")
endif()
get_filename_component(dir ${SKELETON} DIRECTORY)
file(READ ${SKELETON} rest)
set(page "")
set(pattern "<link rel=\"stylesheet\" href=\"([^\"]+)\">|<script src=\"([^\"]+)\"></script>")
while(TRUE)
  string(REGEX MATCH "${pattern}" tag "${rest}")
  if(tag STREQUAL "")
    break()
  endif()
  set(name "${CMAKE_MATCH_1}${CMAKE_MATCH_2}")
  if(NOT EXISTS ${dir}/${name})
    message(FATAL_ERROR "${SKELETON}: ${name} is missing")
  endif()
  file(READ ${dir}/${name} body)
  if(NOT CMAKE_MATCH_1 STREQUAL "")
    # The page's style blocks are indented; a blank line stays empty.
    string(REGEX REPLACE "\n([^\n])" "\n  \\1" body "  ${body}")
    set(inline "<style>\n${body}</style>")
  else()
    set(inline "<script>\n${body}</script>")
  endif()
  string(FIND "${rest}" "${tag}" at)
  string(SUBSTRING "${rest}" 0 ${at} before)
  string(LENGTH "${tag}" length)
  math(EXPR after "${at} + ${length}")
  string(SUBSTRING "${rest}" ${after} -1 rest)
  string(APPEND page "${before}${inline}")
endwhile()
string(APPEND page "${rest}")
# The set loads this one file by its URL: a reference left to another file (a tag
# written in another form) would be a family missing on the set, so it stops the build.
string(REGEX MATCH "<script[^>]* src=[^>]*>|<link[^>]* href=[^>]*>" left "${page}")
if(NOT left STREQUAL "")
  message(FATAL_ERROR "${SKELETON}: ${left} is not inlined; write it as "
                      "<script src=\"X\"></script> or <link rel=\"stylesheet\" href=\"X\">")
endif()
file(WRITE ${OUTPUT}.tmp "${page}")
file(RENAME ${OUTPUT}.tmp ${OUTPUT})
