# Flags that every target of the project is built with, and one function per kind of target.

find_package(Threads REQUIRED)

add_library(tessel_flags INTERFACE)
target_include_directories(tessel_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(tessel_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                       -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# GCC 12 sees overlapping copies in std::string and unset members in std::variant where it optimises; both are
# false (GCC bugs 105651 and 80635).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tessel_flags INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()
# Windows headers: wide characters, Windows 7 and later, and no macros named min, max or like a method.
set(TESSEL_WINDOWS_DEFINITIONS UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
if(TESSEL_WITH_FUZZ)
  target_compile_options(tessel_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                         -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
  target_link_options(tessel_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TESSEL_SANITIZE)
  target_compile_options(tessel_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                         -fno-omit-frame-pointer -O1)
  target_link_options(tessel_flags INTERFACE -fsanitize=address,undefined)
endif()

# tessel_layer(NAME SOURCES ... DEPENDS ...): one static library a folder. DEPENDS names the layers and
# libraries that the folder may see; the link list is the architecture.
function(tessel_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE" ${ARGN})
  add_library(tessel_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(tessel_${name} PUBLIC tessel_flags ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
endfunction()

# tessel_test(NAME SOURCES ... DEPENDS ... [ON_SERVER FILTER]): one test program, its cases known to CTest one
# by one; those that fit the filter once more as "postgresql.CASE", on a server that CTest starts.
function(tessel_test name)
  cmake_parse_arguments(ARG "" "ON_SERVER" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE tessel_flags ${ARG_DEPENDS} GTest::gtest GTest::gtest_main)
  # Cross-built, the programs can be run by CTest alone.
  set(discovery POST_BUILD)
  if(CMAKE_CROSSCOMPILING)
    set(discovery PRE_TEST)
  endif()
  gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 DISCOVERY_MODE ${discovery})
  if(ARG_ON_SERVER AND TESSEL_TEST_CLUSTER)
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 DISCOVERY_MODE ${discovery}
      TEST_PREFIX postgresql. TEST_LIST ${name}_on_server TEST_FILTER ${ARG_ON_SERVER}
      PROPERTIES FIXTURES_REQUIRED postgresql
        ENVIRONMENT "TESSEL_TEST_SERVER=postgresql:///postgres?host=${TESSEL_TEST_CLUSTER}&user=tessel")
  endif()
endfunction()
