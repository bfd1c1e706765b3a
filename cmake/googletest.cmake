# GoogleTest. For a cross compiler it comes out of the sources that Debian's package googletest
# installs: quorvane_gtest is the library, quorvane_gtest_main adds a main().
if(NOT CMAKE_CROSSCOMPILING)
    find_package(GTest REQUIRED)
    return()
endif()
set(googletest /usr/src/googletest/googletest)

add_library(quorvane_gtest STATIC EXCLUDE_FROM_ALL ${googletest}/src/gtest-all.cc)
target_include_directories(quorvane_gtest SYSTEM PUBLIC ${googletest}/include)
target_include_directories(quorvane_gtest PRIVATE ${googletest})

add_library(quorvane_gtest_main STATIC EXCLUDE_FROM_ALL ${googletest}/src/gtest_main.cc)
target_link_libraries(quorvane_gtest_main PUBLIC quorvane_gtest)

add_library(GTest::gtest ALIAS quorvane_gtest)
add_library(GTest::gtest_main ALIAS quorvane_gtest_main)
