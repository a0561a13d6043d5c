# Runs the program and compares the transcripts that it writes with those in docs/, which say what the engines are told.
# What a click hits depends on the size of the map, and that on the fonts of the machine: those are left out.
file(REMOVE_RECURSE ${OUT}) # else it starts where it was left
execute_process(COMMAND ${PROGRAM} ${OUT} RESULT_VARIABLE status OUTPUT_QUIET)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "site_pictures ended with ${status}")
endif()
file(GLOB expected ${SOURCE}/docs/transcripts/*.txt)
list(FILTER expected EXCLUDE REGEX "/(click|road-map-click-engine)\\.txt$")
foreach(path ${expected})
  get_filename_component(name ${path} NAME)
  file(READ ${path} old)
  file(READ ${OUT}/transcript-${name} new)
  string(REPLACE "${SOURCE}/data/" "data/" new "${new}")
  string(REPLACE "${OUT}/" "" new "${new}")
  # The host asks this when it remembers a change, about a second later.
  string(REGEX REPLACE "[^\n]*\\? Location\\.Altitude\\.AutoGet [^\n]*\n?" "" new "${new}")
  string(STRIP "${old}" old)
  string(STRIP "${new}" new)
  if(NOT old STREQUAL new)
    message(SEND_ERROR "docs/transcripts/${name} is not what is sent now:\n${new}")
  endif()
endforeach()
