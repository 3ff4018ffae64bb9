# Writes zvtran's manual page from its own help: help2man reads `zvtran --help`
# and the first line of `--version` (the rest names the OpenGL of the machine
# it runs on), and each command's `--help` becomes a subsection of COMMANDS.
#   cmake -DZVTRAN=PROGRAM -DHELP2MAN=PROGRAM -DWORK=FOLDER -DOUT=zvtran.1.gz -P man_page.cmake
function(run out_var)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE out RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}")
  endif()
  set(${out_var} "${out}" PARENT_SCOPE)
endfunction()

run(help ${ZVTRAN} --help)
run(version ${ZVTRAN} --version)
string(REGEX REPLACE "\n.*" "" version "${version}")
string(REGEX MATCHALL "\n  [a-z0-9]+ " commands "${help}")
set(sections "[COMMANDS]\n")
foreach(command IN LISTS commands)
  string(STRIP "${command}" command)
  run(text ${ZVTRAN} ${command} --help)
  # Taken as it stands: backslashes escaped, no line read as a request.
  string(REPLACE "\\" "\\e" text "${text}")
  string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
  string(APPEND sections ".SS ${command}\n.nf\n${text}.fi\n")
endforeach()
file(WRITE ${WORK}/commands.h2m "${sections}")

run(ignored ${HELP2MAN} --no-info --no-discard-stderr --name "video transitions between two clips"
  --version-string "${version}"
  --include ${WORK}/commands.h2m --output ${WORK}/zvtran.1 ${ZVTRAN})
run(ignored gzip -9nf ${WORK}/zvtran.1)
file(RENAME ${WORK}/zvtran.1.gz ${OUT})
