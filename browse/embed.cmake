# Turns files into texts of a C++ source, each of which a name stands for: those of one kind one behind the other.
# cmake -DPAGE=DIRECTORY -DOUTPUT=FILE -P embed.cmake
function(embed name)
  string(APPEND source "extern const char *const ${name};\nconst char *const ${name} =")
  foreach(file ${ARGN})
    file(READ ${PAGE}/${file} text)
    # In pieces, as compilers need not take a longer literal.
    string(LENGTH "${text}" length)
    set(begin 0)
    while(begin LESS length)
      string(SUBSTRING "${text}" ${begin} 8000 piece)
      string(APPEND source "\n    R\"page(${piece})page\"")
      math(EXPR begin "${begin} + 8000")
    endwhile()
  endforeach()
  set(source "${source};\n" PARENT_SCOPE)
endfunction()

set(source "namespace browse {\n")
embed(pageMarkup page.html)
embed(pageStyle page.css)
embed(pageScript data.js list.js code.js tree.js main.js)
string(APPEND source "}\n")
file(WRITE ${OUTPUT} "${source}")
