# The fuzz bodies and their helpers, built the same way for the libFuzzer targets
# (fuzz/CMakeLists.txt, clang) and for the regression test that runs every kept input as an
# ordinary test (tests/fuzz/CMakeLists.txt, any compiler).

set(HUELOOM_FUZZ_TARGETS theme_file theme_state effect_state state_text lut_cube lut_3dl theme_folder manifest preset)

# hueloom_fuzz_support: shared pieces and the seed catalogue; no property checks.
# hueloom_fuzz_bodies: one fuzz_<name>() per target; whoever links it defines
# vl1::fuzz::property_violated (fuzz_entry.cpp or the regression test).
function(hueloom_add_fuzz_libraries)
  if(TARGET hueloom_fuzz_bodies)
    return()
  endif()
  set(dir ${CMAKE_SOURCE_DIR}/fuzz)
  add_library(hueloom_fuzz_support STATIC
    ${dir}/harness/fuzz_bytes.cpp
    ${dir}/harness/fuzz_component.cpp
    ${dir}/harness/fuzz_process.cpp
    ${dir}/harness/fuzz_themes.cpp
    ${dir}/harness/private_home.cpp
    ${dir}/harness/scratch_dir.cpp
    ${dir}/harness/theme_compare.cpp
    ${dir}/seeds/seed_catalog.cpp)
  target_link_libraries(hueloom_fuzz_support PUBLIC
    hueloom_effect hueloom_presets hueloom_web_client rapidjson fmt::fmt)

  set(bodies ${dir}/fuzz_targets.cpp ${dir}/harness/lut_checks.cpp ${dir}/harness/state_checks.cpp)
  foreach(name ${HUELOOM_FUZZ_TARGETS})
    list(APPEND bodies ${dir}/fuzz_${name}.cpp)
  endforeach()
  add_library(hueloom_fuzz_bodies STATIC ${bodies})
  target_link_libraries(hueloom_fuzz_bodies PUBLIC hueloom_fuzz_support)
endfunction()
