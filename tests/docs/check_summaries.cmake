# Builds the API reference and fails when Doxygen finds a class, struct or free function of the
# public headers without a summary. (Members of classes are read with their class.)
file(REMOVE ${WARNINGS})
get_filename_component(output_dir ${DOXYFILE} DIRECTORY)
execute_process(COMMAND ${DOXYGEN} ${DOXYFILE} WORKING_DIRECTORY ${output_dir}
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "doxygen exited with ${result}")
endif()
file(STRINGS ${WARNINGS} missing
     REGEX "warning: (Compound .* is not documented|Member .* of (namespace|file) .* is not documented)")
if(missing)
    list(JOIN missing "\n" lines)
    message(FATAL_ERROR "without a summary:\n${lines}")
endif()
message(STATUS "every class and free function of the public headers has a summary")
