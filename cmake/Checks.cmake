# The source checks as tests, so that a run of the tests says everything in one list.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# Every header must compile alone: a source that includes nothing else, twice.
set(headerSources)
foreach(room platform component books desk player exports browser cli)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/${room}/*.h")
  foreach(header ${headers})
    set(source "${CMAKE_BINARY_DIR}/header_checks/${header}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
    list(APPEND headerSources "${source}")
  endforeach()
endforeach()
if(headerSources)
  add_library(header_checks OBJECT EXCLUDE_FROM_ALL ${headerSources})
  house_setup(header_checks)
  target_compile_options(header_checks PRIVATE -O0 -g0)
  target_link_libraries(header_checks PRIVATE SQLite::SQLite3 Sodium::Sodium LibCsv::LibCsv
                                              nlohmann_json::nlohmann_json CLI11::CLI11)
  add_test(NAME check.headers COMMAND "${CMAKE_COMMAND}" --build "${CMAKE_BINARY_DIR}" --target header_checks)
  set_tests_properties(check.headers PROPERTIES LABELS check TIMEOUT 1800 PROCESSORS 2)
endif()

foreach(check format layers words)
  add_test(NAME check.${check} COMMAND "${CMAKE_SOURCE_DIR}/tools/check_${check}")
  set_tests_properties(check.${check} PROPERTIES LABELS check)
endforeach()

# Tidy reads the compile commands of the sanitize build: its own compiler's.
add_test(NAME check.tidy COMMAND "${CMAKE_SOURCE_DIR}/tools/check_tidy")
set_tests_properties(check.tidy PROPERTIES LABELS check TIMEOUT 3600 PROCESSORS 2)

file(GLOB toolTests CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/tools/*_test.py")
foreach(toolTest ${toolTests})
  get_filename_component(name "${toolTest}" NAME_WE)
  string(REGEX REPLACE "_test$" "" name "${name}")
  add_test(NAME tools.${name} COMMAND Python3::Interpreter "${toolTest}")
  set_tests_properties(tools.${name} PROPERTIES LABELS check)
endforeach()

# The page: its types, its own logic, and the built page in a real browser against the program as users run it.
foreach(step types unit e2e)
  add_test(NAME web.${step} COMMAND "${CMAKE_SOURCE_DIR}/tools/page" ${step})
  set_tests_properties(web.${step} PROPERTIES TIMEOUT 1800 PROCESSORS 2 RESOURCE_LOCK page)
endforeach()
if(TARGET stockrpt)
  set_tests_properties(web.e2e PROPERTIES ENVIRONMENT "STOCKRPT=$<TARGET_FILE:stockrpt>")
endif()
