# Installs the built tree into a temporary prefix, then builds the consumer against it twice:
# once through find_package(VarnelLibWx CONFIG) and once through pkg-config, and runs both.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(REPLACE ";" " " command "${ARGN}")
        message(FATAL_ERROR "failed (${result}): ${command}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/cmake-build -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-build)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${WORK_DIR}/cmake-build/consumer)

set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs varnellibwx
                OUTPUT_VARIABLE flags RESULT_VARIABLE result OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "pkg-config does not know varnellibwx")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
run(c++ -std=c++20 ${CONSUMER_DIR}/main.cpp -o ${WORK_DIR}/consumer-pkgconfig ${flags})
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${WORK_DIR}/consumer-pkgconfig)
