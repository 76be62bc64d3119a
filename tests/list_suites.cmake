# cmake -D program=PROGRAM -D tests=FILE [-D suffix=SUFFIX] [-D environment=NAME=VALUE] -P list_suites.cmake: asks a
# test program which suites it has, and writes FILE, which makes each of them one test of ctest.
execute_process(COMMAND ${program} --gtest_list_tests OUTPUT_VARIABLE listed COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)[^ \n]+\\.[^\n]*" lines "${listed}")
set(text "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^\n?([^ ]+)\\..*" "\\1" suite "${line}")
  string(APPEND text "add_test([=[${suite}${suffix}]=] [=[${program}]=] [=[--gtest_filter=${suite}.*]=] --gtest_brief=1)\n"
                     "set_tests_properties([=[${suite}${suffix}]=] PROPERTIES TIMEOUT 300 ENVIRONMENT [=[${environment}]=])\n")
endforeach()
file(WRITE ${tests} "${text}")
