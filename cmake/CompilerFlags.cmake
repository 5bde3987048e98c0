# Warnings, hardening, sanitizers and coverage, for every target of the tree.
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "What kind of build, unless told otherwise" FORCE)
endif()

option(KORV_WERROR "Treat compiler warnings as errors" OFF)
option(KORV_COVERAGE "Count which lines and branches run; needs gcc" OFF)
option(KORV_FUZZ "Build the fuzzers; needs clang and the sanitizers" OFF)
option(KORV_SANITIZE "Build with the address, undefined-behaviour and leak sanitizers" OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast
                    $<$<BOOL:${KORV_WERROR}>:-Werror>)
add_compile_definitions(_GLIBCXX_ASSERTIONS)

# Position-independent throughout: the program is a PIE and Qt asks for it.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
add_link_options(-pie)

if(KORV_SANITIZE)
  # Without stack depths, which differ from run to run: what is new about an input is code it runs.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer
                      $<$<BOOL:${KORV_FUZZ}>:-fsanitize=fuzzer-no-link>
                      $<$<BOOL:${KORV_FUZZ}>:-fno-sanitize-coverage=stack-depth>)
  add_link_options(-fsanitize=address,undefined)
else()
  add_compile_options(-fstack-protector-strong -fstack-clash-protection
                      $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:-fcf-protection>
                      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
                      $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  add_link_options(-Wl,-z,relro,-z,now)
endif()
add_link_options(-Wl,--as-needed)

if(KORV_COVERAGE)
  # The compiler would have execv write the counters and stop counting. Between vfork and execv these
  # are the parent's.
  add_compile_options(--coverage -fno-builtin-execv)
  # The ways out for exceptions, which the program leaves uncaught, would count as branches.
  add_compile_options(-fno-exceptions)
  add_link_options(--coverage)
  # The checks in the toolkit's cast macros would count as branches of ours.
  add_compile_definitions(G_DISABLE_CAST_CHECKS)
endif()

# Assertions that name a programming error stay on in release builds.
foreach(flags CMAKE_CXX_FLAGS_RELEASE CMAKE_CXX_FLAGS_RELWITHDEBINFO CMAKE_CXX_FLAGS_MINSIZEREL)
  string(REPLACE "-DNDEBUG" "" ${flags} "${${flags}}")
endforeach()
