# Runs the built tqsync on the samples as a person would, and compares what it prints with the files
# in expected/.
#
#   cmake -DTQSYNC=program -DEMULATOR=command;... -DPYTHON=python3 -DSOURCE=top folder -DWORK=folder
#         [-DUPDATE=1] -P end_to_end.cmake
#
# UPDATE writes the expected files anew; read the difference before committing it.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(expected ${SOURCE}/tests/tqsync/expected)
file(WRITE ${WORK}/nobody "")  # who would answer questions
set(samples master.csv keitai.csv mailer.csv)

# The samples are what their script makes.
execute_process(COMMAND ${PYTHON} ${SOURCE}/samples/make_samples.py ${WORK} COMMAND_ERROR_IS_FATAL ANY)
foreach(sample ${samples})
  file(SHA256 ${WORK}/${sample} made)
  file(SHA256 ${SOURCE}/samples/${sample} kept)
  if(NOT made STREQUAL kept)
    message(SEND_ERROR "samples/${sample} is not what make_samples.py makes")
  endif()
endforeach()

# run(STATUS arguments...): runs tqsync in the folder with the samples; `out` and `err` are what it
# printed.
function(run status)
  execute_process(COMMAND ${EMULATOR} ${TQSYNC} --home home ${ARGN}
    WORKING_DIRECTORY ${WORK} INPUT_FILE ${WORK}/nobody RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL status)
    message(SEND_ERROR "tqsync ${ARGN}: status ${result} instead of ${status}\n${out}${err}")
  endif()
  string(REPLACE "\r" "" out "${out}")
  set(out "${out}" PARENT_SCOPE)
  set(err "${err}" PARENT_SCOPE)
endfunction()

# The output of the last run against a file of expected/.
function(compare name)
  if(UPDATE)
    file(WRITE ${expected}/${name} "${out}")
    return()
  endif()
  file(READ ${expected}/${name} wanted)
  if(NOT out STREQUAL wanted)
    file(WRITE ${WORK}/${name} "${out}")
    message(SEND_ERROR "the output differs: diff ${expected}/${name} ${WORK}/${name}")
  endif()
endfunction()

function(says text)
  if(NOT err MATCHES "${text}")
    message(SEND_ERROR "no \"${text}\" in: ${err}")
  endif()
endfunction()

run(1 group list)
says("tqsync init")
run(0 init)
run(0 group new 友人と取引先 --master master.csv --partner keitai.csv --partner mailer.csv)
run(0 group list)
compare(groups.txt)
run(0 pair 友人と取引先 --rows 12)
compare(pairs.txt)
run(0 --tsv pair 0 --only decide --only duplicates)
compare(decide.tsv)
run(0 pair 0 --only summary)
set(before "${out}")
run(0 pair 0 --only summary)
if(NOT out STREQUAL before)
  message(SEND_ERROR "pairing twice gives two answers")
endif()

run(0 history)
compare(history.txt)
run(0 --tsv history --only added)
compare(added.tsv)
run(2 history --only nothing)

run(1 pair 7)
says("no group")
run(1 pair 0 --encoding utf8)
says("master.csv, line 1: .*no UTF-8")
file(RENAME ${WORK}/keitai.csv ${WORK}/moved.csv)
run(1 pair 0)
says("keitai.csv: there is no such file")
run(0 group remove 0 keitai.csv)
run(0 group remove 0 mailer.csv)
run(1 pair 0)
says("no partner")
run(1 group delete 0)
says("--yes")
run(0 group delete 0 --yes)
run(2)
run(2 pair)
run(2 pair 0 --only nothing)
run(2 group add 0 moved.csv --app many)
