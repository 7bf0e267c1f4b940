# Shared compile settings for every Aerix target.
add_library(aerix_options INTERFACE)
target_compile_options(aerix_options INTERFACE -Wall -Wextra -Werror)
# g++ 12 at -O3 reports -Wrestrict on plain std::string concatenation inside libstdc++ (a known
# false positive); it would otherwise break Release builds under -Werror.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(aerix_options INTERFACE -Wno-restrict)
endif()
target_include_directories(aerix_options INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(AERIX_SANITIZE)
    target_compile_options(aerix_options INTERFACE
        -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(aerix_options INTERFACE -fsanitize=address,undefined)
endif()

# aerix_library(NAME DIR DEPS...) : one static library from every .cpp of a source folder.
function(aerix_library name)
    cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC aerix_options ${ARG_DEPS})
endfunction()

# aerix_test(NAME DEPS...) : one GoogleTest program from every .cpp of a test folder.
function(aerix_test name)
    cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE aerix_options aerix_test_support ${ARG_DEPS}
        GTest::gtest GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT "AERIX_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
endfunction()
