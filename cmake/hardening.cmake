# What stands in the way of a fault that strangers' mail might find. The library's own checks hold in every build; the
# rest belongs to builds that are used, and sanitizers look closer than it does.
target_compile_definitions(velmora_flags INTERFACE _GLIBCXX_ASSERTIONS)
if(NOT VELMORA_SANITIZE)
  set(used_builds "$<CONFIG:Release,RelWithDebInfo>")
  set(compile_options -fPIE -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    list(APPEND compile_options -fcf-protection=full)
  endif()
  target_compile_options(velmora_flags INTERFACE "$<${used_builds}:${compile_options}>")
  target_link_options(velmora_flags INTERFACE "$<${used_builds}:-pie;-Wl,-z,relro,-z,now>")
endif()
