# The tests of a folder in one program: reading the headers, instantiating Qt Test and linking once for many is most of
# what tests cost to build. Each is still run by itself, in a process of its own: "window_tests TargetsWindowTest".
# Each file stands in a namespace of its own, main() included, behind the headers of all.

set(FilesOfABundlesSource 10)  # compiled at a time: so many that all processors have their share

# tidewatch_bundle_add(NAME LIBRARY...): NAME.cpp goes into the program of the calling folder.
function(tidewatch_bundle_add sName)
    get_directory_property(sNames TIDEWATCH_BUNDLE_TESTS)
    if(NOT sNames)
        cmake_language(DEFER CALL tidewatch_bundle)
    endif()
    set_property(DIRECTORY APPEND PROPERTY TIDEWATCH_BUNDLE_TESTS ${sName})
    set_property(DIRECTORY APPEND PROPERTY TIDEWATCH_BUNDLE_LIBRARIES ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${sName}.cpp)
endfunction()

# tidewatch_bundle_name(VARIABLE): the name of the calling folder's program.
function(tidewatch_bundle_name sVariable)
    file(RELATIVE_PATH sFolder ${CMAKE_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    string(REPLACE "/" "_" sFolder ${sFolder})
    set(${sVariable} ${sFolder}_tests PARENT_SCOPE)
endfunction()

# Makes the program once the folder has been read.
function(tidewatch_bundle)
    tidewatch_bundle_name(sBundle)
    get_directory_property(sNames TIDEWATCH_BUNDLE_TESTS)
    get_directory_property(sLibraries TIDEWATCH_BUNDLE_LIBRARIES)
    list(REMOVE_DUPLICATES sLibraries)
    set(sSources ${CMAKE_CURRENT_BINARY_DIR}/${sBundle}.cpp)
    set(sDeclared "")
    set(sListed "")
    list(LENGTH sNames iNames)
    set(iFrom 0)
    while(iFrom LESS iNames)
        list(SUBLIST sNames ${iFrom} ${FilesOfABundlesSource} sPart)
        set(sIncludes "")
        set(sFiles "")
        foreach(sName ${sPart})
            file(STRINGS ${sName}.cpp sLines REGEX "^#include [<\"][^>\"]+[>\"]")
            list(APPEND sIncludes ${sLines})
            string(APPEND sFiles "namespace ${sName}_file {\n#include \"${CMAKE_CURRENT_SOURCE_DIR}/${sName}.cpp\"\n}\n")
            string(APPEND sDeclared "namespace ${sName}_file {\nint main(int, char**);\n}\n")
            string(APPEND sListed "    {\"${sName}\", ${sName}_file::main},\n")
            qt_generate_moc(${sName}.cpp ${CMAKE_CURRENT_BINARY_DIR}/${sName}.moc)
            list(APPEND sSources ${CMAKE_CURRENT_BINARY_DIR}/${sName}.moc)
        endforeach()
        list(FILTER sIncludes EXCLUDE REGEX "\\.moc\"")
        list(REMOVE_DUPLICATES sIncludes)
        list(JOIN sIncludes "\n" sIncludes)
        set(sSource ${CMAKE_CURRENT_BINARY_DIR}/${sBundle}_${iFrom}.cpp)
        file(CONFIGURE OUTPUT ${sSource} CONTENT "${sIncludes}\n#include <memory>\n${sFiles}" @ONLY)
        list(APPEND sSources ${sSource})
        math(EXPR iFrom "${iFrom} + ${FilesOfABundlesSource}")
    endwhile()
    configure_file(${CMAKE_SOURCE_DIR}/tests/Bundle.cpp.in ${sBundle}.cpp @ONLY)

    add_executable(${sBundle} ${sSources})
    set_target_properties(${sBundle} PROPERTIES AUTOMOC OFF)
    target_include_directories(${sBundle} PRIVATE ${CMAKE_CURRENT_BINARY_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${sBundle} PRIVATE ${sLibraries} Qt6::Test)
    tidewatch_test_headers_of(${sBundle} ${sLibraries})
endfunction()
