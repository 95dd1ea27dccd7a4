# What distributions expect of a released binary, and nothing of the builder's machine in it.
# `hardening-check` of Debian's devscripts tells what arrived.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(-fstack-protector-strong)
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
# Some compilers define it of their own accord, to a lower level.
add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
# CET on x86, BTI and pointer authentication on ARM.
foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection=full -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER "TIDEWELL_HAS${flag}" has_flag)
    check_cxx_compiler_flag(${flag} ${has_flag})
    if(${has_flag})
        add_compile_options(${flag})
    endif()
endforeach()

# Link-time optimisation, where somebody asks for it, takes an executable's -fPIC for -fPIE, and copies
# out of Qt's libraries what these go on to use themselves: the first screen crashes the program.
check_cxx_compiler_flag(-mno-direct-extern-access TIDEWELL_HAS_INDIRECT_ACCESS)
if(TIDEWELL_HAS_INDIRECT_ACCESS)
    add_link_options(-mno-direct-extern-access)
endif()

# __FILE__ and debugging information name files as the repository does.
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=")
if(NOT PROJECT_BINARY_DIR MATCHES "^${PROJECT_SOURCE_DIR}/")
    add_compile_options("-ffile-prefix-map=${PROJECT_BINARY_DIR}/=build/")
endif()
