# Makes the Debian packages, unpacks them into an empty folder, and uses them from there.
# Needs what package_test.cmake needs, and examples, cpack, pkgconfig, packages (of those that there have to be).

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

# The fields of a package that do not depend on how it was built.
function(expect_control package)
    run(dpkg-deb --field ${deb} Package Version Section Suggests Description)
    file(READ ${sources}/expected/${package}.control expected)
    string(REPLACE "@version@" "${version}" expected "${expected}")
    expect_equal("control fields of ${package}" "${output}" "${expected}")
endfunction()

function(expect_files package folder)
    file(GLOB_RECURSE files RELATIVE ${folder} ${folder}/*)
    list(SORT files)
    list(TRANSFORM files REPLACE "vrllibTargets-[a-z]+\\.cmake$" "vrllibTargets-CONFIG.cmake")
    list(JOIN files "\n" files)
    file(READ ${sources}/expected/${package}.files expected)
    string(REPLACE "@version@" "${version}" expected "${expected}")
    expect_equal("files of ${package}" "${files}\n" "${expected}")
endfunction()

function(expect_depends package pattern)
    run(dpkg-deb --field ${deb} Depends)
    string(STRIP "${output}" depends)
    if(NOT depends MATCHES "${pattern}")
        message(FATAL_ERROR "wrong: Depends of ${package}: ${depends}")
    endif()
endfunction()

file(REMOVE_RECURSE ${scratch})
file(MAKE_DIRECTORY ${scratch}/alone)
run(${cpack} --config ${built}/CPackConfig.cmake -C ${config} -B ${scratch}/made)
file(GLOB made RELATIVE ${scratch}/made ${scratch}/made/*.deb)
list(LENGTH made count)
list(LENGTH packages expected_count)
expect_equal("number of packages (${made})" ${count} ${expected_count})

set(root ${scratch}/root)
foreach(package IN LISTS packages)
    file(GLOB deb ${scratch}/made/${package}_${version}_*.deb)
    expect_control(${package})
    run(dpkg-deb -x ${deb} ${scratch}/alone/${package})
    expect_files(${package} ${scratch}/alone/${package})
    if(package STREQUAL "libvrllib2")
        expect_depends(${package} "libc6 \\(>= [0-9.]+\\), .*libstdc\\+\\+6 \\(>= [0-9.]+\\)")
    elseif(package STREQUAL "libvrllib-dev")
        expect_depends(${package} "^libvrllib2 \\(= ${version}\\)$")
    else()
        expect_depends(${package} "^libvrllib2 \\(= ${version}\\), .*libstdc\\+\\+6")
        run(dpkg-deb --field ${deb} Recommends)
        expect_equal("recommendation of ${package}" "${output}" "librsvg2-bin\n")
    endif()
    run(dpkg-deb -x ${deb} ${root})
endforeach()

set(prefix ${root}/usr)
expect_links_to_lead_somewhere(${prefix}/share/doc)
expect_no_path_of_the_build(${prefix} ${built})
run(${CMAKE_COMMAND} -E env ${prefix}/bin/vrl-config --version)
expect_equal("version of vrl-config" "${output}" "${version}\n")

# A plug-in by find_package, another without a build system, and a host by pkg-config.
set(plugins ${scratch}/plugins)
build_project(${sources}/plugin ${plugins} ${prefix})
separate_arguments(flag_list UNIX_COMMAND "${flags}")
run(${prefix}/bin/vrl-config --plugin-file minimal)
string(STRIP "${output}" file)
run(${CMAKE_COMMAND} -E env CXX=${compiler} ${prefix}/bin/vrl-config
    --build ${plugins}/${file} ${examples}/minimal_plugin/plugin.cpp -- ${flag_list})
expect_exports(${plugins}/lib_wn_packagePlugin.so.5.1.3 "getAPIversion;initLibraryBB")
expect_exports(${plugins}/lib_wn_minimal.so.5.1.3 "getAPIversion;initLibraryBB")

set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/lib/pkgconfig)
run(${pkgconfig} --modversion vrllib)
expect_equal("version of pkg-config" "${output}" "${version}\n")
run(${pkgconfig} --variable=libdir vrllib)
string(STRIP "${output}" libdir)
run(${pkgconfig} --cflags --libs vrllib)
separate_arguments(package_flags UNIX_COMMAND "${output}")
run(${compiler} -std=c++17 ${flag_list} ${sources}/host/host.cpp -o ${scratch}/host ${package_flags}
    -Wl,-rpath,${libdir})

file(WRITE ${scratch}/VRLConfig.ini
    "sodlldir_clear\n"
    "sodlldir_linux = ${plugins}\n"
    "sodllpostfix_linux = .so.\${version}\n"
    "sodllfile = packagePlugin\n"
    "sodllfile = minimal\n")
run(${scratch}/host ${scratch}/VRLConfig.ini)
expect_equal("output of the host" "${output}" "  packageWaveguide\n  ring\n${story}")

# The tool runs where it is, and finds the plug-ins.
if("vrl" IN_LIST packages)
    run(${prefix}/bin/vrl --version)
    string(FIND "${output}" "${version}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "wrong: version of vrl: ${output}")
    endif()
    run(${prefix}/bin/vrl plugins --config ${scratch}/VRLConfig.ini)
    foreach(plugin IN ITEMS packagePlugin minimal)
        string(FIND "${output}" "${plugins}/lib_wn_${plugin}.so.5.1.3" place)
        if(place EQUAL -1)
            message(FATAL_ERROR "wrong: vrl plugins does not name ${plugin}:\n${output}")
        endif()
    endforeach()
endif()
