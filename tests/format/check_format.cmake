# Fails when a C++ file of the tree differs from what .clang-format makes of it.
execute_process(COMMAND git ls-files -- "*.h" "*.cpp"
                WORKING_DIRECTORY ${SOURCE_DIR}
                OUTPUT_VARIABLE files RESULT_VARIABLE git_result
                OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT git_result EQUAL 0 OR files STREQUAL "")
    file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR}
         ${SOURCE_DIR}/varnellib/*.h ${SOURCE_DIR}/varnellib/*.cpp
         ${SOURCE_DIR}/varnellibwx/*.h ${SOURCE_DIR}/varnellibwx/*.cpp
         ${SOURCE_DIR}/tests/*.h ${SOURCE_DIR}/tests/*.cpp
         ${SOURCE_DIR}/bench/*.cpp ${SOURCE_DIR}/examples/*.h ${SOURCE_DIR}/examples/*.cpp)
else()
    string(REPLACE "\n" ";" files "${files}")
endif()
list(LENGTH files count)
execute_process(COMMAND ${CLANG_FORMAT} --dry-run -Werror ${files}
                WORKING_DIRECTORY ${SOURCE_DIR}
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "Unformatted files (run clang-format -i on them)")
endif()
message(STATUS "${count} files formatted")
