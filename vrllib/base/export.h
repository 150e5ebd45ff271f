#pragma once

// The macros that decide what the library shows to hosts and plug-ins.
//
// VRL_API            a class, function or specialised function template of the interface
// VRL_TEMPLATE       the primary template of an exported class template
// VRL_INSTANCE       extern template class VRL_INSTANCE X<T>; in a header. The one instantiation, template class X<T>;,
//                    is in a .cpp without any attribute
// VRL_PLUGIN_EXPORT  an entry point of a plug-in, under its plain name
// VRL_PRINTF_FORMAT  (text, first) a function that formats as printf does, from these parameters, counted from 1; the
//                    compiler then checks its arguments

#if defined(_WIN32)
#    if defined(VRL_BUILDING_LIBRARY)
#        define VRL_API __declspec(dllexport)
#    else
#        define VRL_API __declspec(dllimport)
#    endif
#    define VRL_TEMPLATE
#    define VRL_INSTANCE VRL_API
#    define VRL_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#    define VRL_API __attribute__((visibility("default")))
#    define VRL_TEMPLATE VRL_API
#    define VRL_INSTANCE
#    define VRL_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#if defined(__MINGW32__) && !defined(__clang__)  // where "printf" alone means the older formats of the system
#    define VRL_PRINTF_FORMAT(text, first) __attribute__((format(gnu_printf, text, first)))
#elif defined(__GNUC__)
#    define VRL_PRINTF_FORMAT(text, first) __attribute__((format(printf, text, first)))
#else
#    define VRL_PRINTF_FORMAT(text, first)
#endif
