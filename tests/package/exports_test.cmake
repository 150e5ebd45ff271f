# Plug-ins show their entry points, and what EXPORTS names, but nothing else. Needs: plugins, test_plugins, nm.

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

expect_exports(${plugins}/lib_wn_foundrySampleFab.so.5.1.3
    "getAPIversion;initLibraryBB;initLibraryBBView;initLibraryFoundry")
expect_exports(${test_plugins}/lib_wn_noEntry.so.5.1.3 "unrelated")

# A type that host and plug-in each have a copy of stays visible.
run(${nm} --dynamic --defined-only --format=just-symbols ${plugins}/lib_wn_foundrySampleFab.so.5.1.3)
foreach(symbol IN ITEMS _ZTIN9samplefab14WaveguideModesE _ZTSN9samplefab14WaveguideModesE)
    if(NOT output MATCHES "(^|\n)${symbol}\n")
        message(FATAL_ERROR "not visible: ${symbol}")
    endif()
endforeach()
