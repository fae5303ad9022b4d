# The API reference from the public headers (Doxygen): the target "docs" writes it into
# <build>/docs/html, and the test "api-summaries" fails when a class or a free function of the
# public headers has no summary.
find_program(DOXYGEN_EXECUTABLE doxygen)
if(NOT DOXYGEN_EXECUTABLE)
    message(STATUS "Doxygen not found: no API reference and no summary check")
    return()
endif()

set(VARNEL_DOCS_OUTPUT ${PROJECT_BINARY_DIR}/docs)
configure_file(${PROJECT_SOURCE_DIR}/docs/api/Doxyfile.in ${VARNEL_DOCS_OUTPUT}/Doxyfile @ONLY)
add_custom_target(docs
    COMMAND ${DOXYGEN_EXECUTABLE} ${VARNEL_DOCS_OUTPUT}/Doxyfile
    WORKING_DIRECTORY ${VARNEL_DOCS_OUTPUT}
    COMMENT "API reference in ${VARNEL_DOCS_OUTPUT}/html"
    VERBATIM)

if(VARNEL_BUILD_TESTS)
    add_test(NAME api-summaries
             COMMAND ${CMAKE_COMMAND} -DDOXYGEN=${DOXYGEN_EXECUTABLE}
                     -DDOXYFILE=${VARNEL_DOCS_OUTPUT}/Doxyfile
                     -DWARNINGS=${VARNEL_DOCS_OUTPUT}/warnings.txt
                     -P ${PROJECT_SOURCE_DIR}/tests/docs/check_summaries.cmake)
endif()
