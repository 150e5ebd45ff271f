# How a plug-in is made: vrl_add_plugin. Part of the installed package, and what this project makes its own plug-ins with.

# What ${version} of a configuration file is, if the host does not set it.
set_property(GLOBAL PROPERTY VRL_PLUGIN_VERSION_DEFAULT 5.1.3)

# vrl_add_plugin(NAME source... [VERSION version] [EXPORTS function...] [ALLOW_UNDEFINED])
#
# Adds the target NAME, a plug-in: lib_wn_NAME.so.VERSION, on Windows lib_wn_NAME.VERSION.dll. A configuration file loads it
# with `sodllfile = NAME` and the postfix `.so.${version}`. Its entry points, those that vrllib/plugins/factory_loader.h and
# loader.h document, are all that it exports.
#   VERSION          otherwise the variable VRL_PLUGIN_VERSION, otherwise 5.1.3
#   EXPORTS          further plain names to export, for hosts that call them with soloader_Call
#   ALLOW_UNDEFINED  does not refuse undefined symbols: Clang's sanitisers leave theirs to the program
function(vrl_add_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 plugin "ALLOW_UNDEFINED" "VERSION" "EXPORTS")
    if(NOT name MATCHES "^[A-Za-z0-9_][A-Za-z0-9_.+-]*$")
        message(FATAL_ERROR "vrl_add_plugin: \"${name}\" cannot be part of a file name. Use letters, digits and \"_.+-\".")
    endif()
    if(plugin_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "vrl_add_plugin(${name}): no value after ${plugin_KEYWORDS_MISSING_VALUES}.")
    endif()
    add_library(${name} MODULE ${plugin_UNPARSED_ARGUMENTS})
    vrl_plugin_properties(${name} ${name} ${ARGN})
endfunction()

# What makes a plug-in of a library target: vrl_plugin_properties(target NAME [options of vrl_add_plugin]).
function(vrl_plugin_properties target name)
    cmake_parse_arguments(PARSE_ARGV 2 plugin "ALLOW_UNDEFINED" "VERSION" "EXPORTS")
    get_property(version GLOBAL PROPERTY VRL_PLUGIN_VERSION_DEFAULT)
    if(plugin_VERSION)
        set(version ${plugin_VERSION})
    elseif(VRL_PLUGIN_VERSION)
        set(version ${VRL_PLUGIN_VERSION})
    endif()

    target_link_libraries(${target} PRIVATE vrllib::vrllib)
    target_compile_features(${target} PRIVATE cxx_std_17)
    set_target_properties(${target} PROPERTIES
        PREFIX ""
        C_VISIBILITY_PRESET hidden
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    if(WIN32)
        set_target_properties(${target} PROPERTIES OUTPUT_NAME lib_wn_${name}.${version} SUFFIX .dll)
        target_link_options(${target} PRIVATE -Wl,--exclude-all-symbols)
        return()
    endif()

    set_target_properties(${target} PROPERTIES OUTPUT_NAME lib_wn_${name} SUFFIX .so.${version})
    set(map ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/vrl-plugin.map)
    if(plugin_EXPORTS)
        file(READ ${map} text)
        list(JOIN plugin_EXPORTS ";\n        " names)
        string(REPLACE "initLibrary*;" "initLibrary*;\n        ${names};" text "${text}")
        set(map ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        file(GENERATE OUTPUT ${map} CONTENT "${text}")
    endif()
    target_link_options(${target} PRIVATE "LINKER:--version-script=${map}" LINKER:--exclude-libs=ALL)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
    if(NOT plugin_ALLOW_UNDEFINED)
        target_link_options(${target} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()
