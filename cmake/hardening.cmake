# Release builds are hardened as a distribution's packages are. Sanitizers bring checks of their own, which clash.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()

set(QBOBJ_HARDENED OFF)
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(QBOBJ_HARDENED ON)
    foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "HAVE${flag}" supported)
        check_cxx_compiler_flag(${flag} ${supported})
        if(${supported}) # some are of one processor only
            add_compile_options(${flag})
        endif()
    endforeach()
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    add_link_options(LINKER:-z,relro,-z,now)
endif()
