# Puts the built libraries into a temporary root, then builds the consumer against them twice:
# once through find_package(VarnelLibWx CONFIG) and once through pkg-config with the run path
# the README gives, and runs both (the second without LD_LIBRARY_PATH: it finds the libraries by
# its run path). The README's first host ("Your first dialog") is built both ways too, from the
# README's own text, so that it stays true.
# With PACKAGES set, the root is made from the Debian packages that cpack builds (unpacked with
# dpkg-deb, their metadata checked); otherwise from cmake --install.
file(REMOVE_RECURSE ${WORK_DIR})

# The first code block after the README's "### Your first dialog" heading.
file(READ ${README} readme)
string(FIND "${readme}" "### Your first dialog" at)
if(at LESS 0)
    message(FATAL_ERROR "the README has no first dialog")
endif()
string(SUBSTRING "${readme}" ${at} -1 readme)
string(FIND "${readme}" "```cpp\n" open)
math(EXPR open "${open} + 7")
string(SUBSTRING "${readme}" ${open} -1 readme)
string(FIND "${readme}" "```" close)
string(SUBSTRING "${readme}" 0 ${close} firstHost)
file(WRITE ${WORK_DIR}/firsthost/main.cpp "${firstHost}")
file(WRITE ${WORK_DIR}/firsthost/CMakeLists.txt [=[
cmake_minimum_required(VERSION 3.25)
project(VarnelFirstHost LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(VarnelLibWx CONFIG REQUIRED)
add_executable(firsthost main.cpp)
target_link_libraries(firsthost PRIVATE Varnel::LibWx)
]=])

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(REPLACE ";" " " command "${ARGN}")
        message(FATAL_ERROR "failed (${result}): ${command}")
    endif()
endfunction()

function(expect_field deb field expected)
    execute_process(COMMAND dpkg-deb --field ${deb} ${field} OUTPUT_VARIABLE value
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT value MATCHES "${expected}")
        message(FATAL_ERROR "${deb}: ${field} is '${value}', expected '${expected}'")
    endif()
endfunction()

if(PACKAGES)
    set(root ${WORK_DIR}/root)
    set(prefix ${root}/usr)
    run(cpack --config ${BUILD_DIR}/CPackConfig.cmake -B ${WORK_DIR}/packages)
    foreach(package libvarnellibwx0 libvarnellibwx-dev)
        file(GLOB deb ${WORK_DIR}/packages/${package}_${VERSION}-1_*.deb)
        if(NOT deb)
            message(FATAL_ERROR "cpack made no ${package} ${VERSION}-1")
        endif()
        expect_field(${deb} Package "^${package}$")
        run(dpkg-deb --extract ${deb} ${root})
    endforeach()
    expect_field(${WORK_DIR}/packages/libvarnellibwx-dev_${VERSION}-1_amd64.deb Depends
                 "libvarnellibwx0 \\(= ${VERSION}-1\\)")
else()
    set(prefix ${WORK_DIR}/prefix)
    run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
endif()

run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/cmake-build -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-build)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${WORK_DIR}/cmake-build/consumer)
run(${CMAKE_COMMAND} -S ${WORK_DIR}/firsthost -B ${WORK_DIR}/firsthost-build -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/firsthost-build)

set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs varnellibwx
                OUTPUT_VARIABLE flags RESULT_VARIABLE result OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "pkg-config does not know varnellibwx")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
execute_process(COMMAND pkg-config --variable=libdir varnellibwx OUTPUT_VARIABLE libdir
                OUTPUT_STRIP_TRAILING_WHITESPACE)
run(c++ -std=c++20 ${CONSUMER_DIR}/main.cpp -o ${WORK_DIR}/consumer-pkgconfig ${flags}
    -Wl,-rpath,${libdir})
run(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${WORK_DIR}/consumer-pkgconfig)
run(c++ -std=c++20 ${WORK_DIR}/firsthost/main.cpp -o ${WORK_DIR}/firsthost-pkgconfig ${flags}
    -Wl,-rpath,${libdir})
