# The dictionaries of the spell checker, of the system's lists of words and those of the trade: American English
# (the usual one), British, Canadian, French.
find_path(INSPECTOR_WORD_LISTS american-english PATHS /usr/share/dict NO_DEFAULT_PATH REQUIRED
          DOC "The folder of the packages wamerican, wbritish, wcanadian and wfrench")
set(trade "${PROJECT_SOURCE_DIR}/assets/words")

set(dictionaries)
function(inspector_dictionary name)
  set(dictionary "${INSPECTOR_DICTIONARIES}/${name}.dct")
  add_custom_command(
    OUTPUT "${dictionary}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${INSPECTOR_DICTIONARIES}"
    COMMAND inspector-dict build -o "${dictionary}" ${ARGN}
    DEPENDS inspector-dict ${ARGN} VERBATIM)
  set(dictionaries ${dictionaries} "${dictionary}" PARENT_SCOPE)
endfunction()
inspector_dictionary(american "${INSPECTOR_WORD_LISTS}/american-english" "${trade}/trade.txt")
inspector_dictionary(british "${INSPECTOR_WORD_LISTS}/british-english" "${trade}/trade.txt")
inspector_dictionary(canadian "${INSPECTOR_WORD_LISTS}/canadian-english" "${trade}/trade.txt")
inspector_dictionary(french "${INSPECTOR_WORD_LISTS}/french" "${trade}/french-elisions.txt" "${trade}/french-trade.txt")
add_custom_target(inspector_dictionaries ALL DEPENDS ${dictionaries})
