# Helpers that the lists of the rooms share.

find_package(GTest CONFIG)
find_package(rapidcheck CONFIG)
find_package(benchmark CONFIG)
find_package(nlohmann_json CONFIG)
find_package(CLI11 CONFIG)
find_package(SQLite3)
find_path(SODIUM_INCLUDE_DIR sodium.h)
find_library(SODIUM_LIBRARY sodium)
find_path(LIBCSV_INCLUDE_DIR csv.h)
find_library(LIBCSV_LIBRARY csv)
find_path(XLSXWRITER_INCLUDE_DIR xlsxwriter.h)
find_library(XLSXWRITER_LIBRARY xlsxwriter)

# house_system_library(NAME LIBRARY INCLUDE_DIR): an imported target for a library without a package file.
function(house_system_library name library includeDir)
  if(NOT TARGET ${name} AND ${library})
    add_library(${name} UNKNOWN IMPORTED)
    set_target_properties(${name} PROPERTIES IMPORTED_LOCATION "${${library}}" INTERFACE_INCLUDE_DIRECTORIES
                                                                               "${${includeDir}}")
  endif()
endfunction()
house_system_library(Sodium::Sodium SODIUM_LIBRARY SODIUM_INCLUDE_DIR)
house_system_library(LibCsv::LibCsv LIBCSV_LIBRARY LIBCSV_INCLUDE_DIR)
house_system_library(XlsxWriter::XlsxWriter XLSXWRITER_LIBRARY XLSXWRITER_INCLUDE_DIR)

# house_sources(OUT [FOLDER]): all sources under the folder (this one by default), new files picked up by the build.
function(house_sources out)
  set(folder "${CMAKE_CURRENT_SOURCE_DIR}")
  if(ARGC GREATER 1)
    set(folder "${CMAKE_CURRENT_SOURCE_DIR}/${ARGV1}")
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  set(${out}
      "${sources}"
      PARENT_SCOPE)
endfunction()

# house_setup(TARGET): what every target of the house has in common. Includes are written from the root.
function(house_setup target)
  target_include_directories(${target} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE house_warnings)
endfunction()
