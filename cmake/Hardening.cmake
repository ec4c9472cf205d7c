# Hardening flags of every binary, in this one place.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

add_compile_options(-fstack-protector-strong)
foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "HAS${flag}" hasFlag)
    check_cxx_compiler_flag("-Werror ${flag}" ${hasFlag})
    if(${hasFlag})
        add_compile_options(${flag})
    endif()
endforeach()

# The C library's checked functions need the optimiser, and sanitizers replace them.
string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" buildTypeFlags)
if("${${buildTypeFlags}}" MATCHES "-O[123sg]" AND NOT VORNIPC_SANITIZE)
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack -Wl,--as-needed)
