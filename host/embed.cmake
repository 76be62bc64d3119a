# Embeds text files in a program as they are: PostScript, HTML and style sheets stay files that an editor and an
# interpreter understand.
#
#   riders_embed(TARGET NAMESPACE FILE NAME [FILE NAME...])
#
# turns each FILE, relative to the current folder or absolute, into a `const std::string_view NAME` in that namespace, whose
# bytes are the file's. Code that uses it declares it: `extern const std::string_view NAME;`. The next build embeds
# a changed file again.
function(riders_embed target namespace)
  set(script ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/embed_file.cmake)
  while(ARGN)
    list(POP_FRONT ARGN file name)
    string(REPLACE ../ "" inside ${file})
    get_filename_component(path ${file} ABSOLUTE)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_embedded/${inside}.cpp)
    add_custom_command(OUTPUT ${source}
      COMMAND ${CMAKE_COMMAND} -DFILE=${path} -DNAMESPACE=${namespace} -DNAME=${name}
              -DOUTPUT=${source} -P ${script}
      DEPENDS ${path} ${script} VERBATIM)
    target_sources(${target} PRIVATE ${source})
  endwhile()
endfunction()
