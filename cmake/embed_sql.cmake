# Writes the SQL files, in the order of their names, as one C++ array of texts.
# A raw string literal is limited in length by some compilers, so each file is a text of its own.
string(REPLACE " " ";" FILES "${FILES}")
list(SORT FILES)
set(text "// Generated from schema/*.sql.\n#include \"schema_text.h\"\n\nnamespace qbdb {\n\nconst char *const schema_text[] = {\n")
foreach(file IN LISTS FILES)
    file(READ "${file}" sql)
    string(APPEND text "R\"sql(${sql})sql\",\n")
endforeach()
string(APPEND text "nullptr};\n\n} // namespace qbdb\n")
file(WRITE "${OUTPUT}" "${text}")
