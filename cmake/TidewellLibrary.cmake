# tidewell_library(NAME SOURCES file... [LINK library...] [QT])
#
# One static library per folder. Who may include what is held by tools/check-layers.
function(tidewell_library name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC tidewell_options ${ARG_LINK})
    if(ARG_QT)
        tidewell_use_qt(${name})
    endif()
endfunction()

# tidewell_use_qt(TARGET): moc, and none of Qt's lower-case macros.
function(tidewell_use_qt target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII
                                                 QT_NO_CAST_TO_ASCII)
endfunction()

# tidewell_test(NAME SOURCES file... [LINK library...] [QT]): a GoogleTest program, its cases
# known to CTest one by one.
function(tidewell_test name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE tidewell_fakes ${ARG_LINK} GTest::gmock)
    if(ARG_QT)
        tidewell_use_qt(${name})
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 DISCOVERY_MODE PRE_TEST
                         NO_PRETTY_VALUES)
endfunction()
