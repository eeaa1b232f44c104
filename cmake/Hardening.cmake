# harden(TARGET): makes memory faults harder to exploit in optimized builds, and makes those builds
# independent of their folder and time. Programs that link to the target are not affected.
# Tools/check-hardening.py verifies the result.
function(harden target)
  set(options -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
  if(WIN32)
    target_link_options(${target} PRIVATE
      -Wl,--nxcompat,--dynamicbase,--high-entropy-va,--no-insert-timestamp)
    target_link_libraries(${target} PRIVATE -l:libssp.a)  # linked statically, so that no further DLL is needed
  else()
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
      list(APPEND options -fcf-protection)
      # Debian's crti.o is not marked, so the linker would drop this mark, although it applies.
      target_link_options(${target} PRIVATE -Wl,-z,shstk)
    endif()
  endif()
  set(optimized $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  target_compile_options(${target} PRIVATE
    "$<$<AND:${optimized},$<COMPILE_LANGUAGE:CXX>>:${options}>")
endfunction()
