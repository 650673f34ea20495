# Makes the help file RESULT of the project in SOURCE with CHMCMD, which writes where the project lies: in the copy WORK.
file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE}/ DESTINATION ${WORK} FILES_MATCHING
  PATTERN *.html PATTERN *.css PATTERN *.png PATTERN *.hhp PATTERN *.hhc PATTERN *.hhk)
execute_process(COMMAND ${CHMCMD} TSLhelp.hhp WORKING_DIRECTORY ${WORK}
  RESULT_VARIABLE failed OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(failed OR NOT EXISTS ${WORK}/TSLhelp.chm)
  message(FATAL_ERROR "${said}")
endif()
file(RENAME ${WORK}/TSLhelp.chm ${RESULT})
