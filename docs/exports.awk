# SPDX-License-Identifier: MIT
# Makes the machine-readable list of exports from the header as header.awk prepared it:
#   awk -f exports.awk PREPARED_HEADER > exports.json
# One object an export, in the header's order, for programs that make bindings for other languages.
function Quoted(text) {
  gsub(/<\/?code>/, "\"", text)
  gsub(/\\/, "\\\\", text)
  gsub(/"/, "\\\"", text)
  gsub(/[ \t\n]+/, " ", text)
  sub(/^ /, "", text)
  sub(/ $/, "", text)
  return "\"" text "\""
}

# What an argument is, from its annotation and its type; what it is counted in, from its text.
function Direction(annotation, type) {
  if (annotation ~ /^_Inout/) return "inout"
  if (annotation ~ /^_Out/) return "out"
  if (annotation ~ /^_In/) return "in"
  if (type ~ /&/ && type !~ /^const /) return "out"
  return "in"
}
function Unit(name, type, about) {
  if (type ~ /BYTE|unsigned char/) return "bytes"
  if (type ~ /\*/ && type !~ /char|wchar_t/) return ""
  if (type ~ /char|CString/) return "characters"
  if (name ~ /Ms$/) return "milliseconds"
  if (name ~ /Seconds$/) return "seconds"
  if (name == "capacity" || name == "free" || name == "count") return about ~ /in bytes|bytes|how many/ && about !~ /not bytes/ ? "bytes" : "characters"
  return ""
}
function Encoding(type, about) {
  if (type ~ /wchar_t|CStringW/) return "utf-16"
  if (about ~ /UTF-8/) return "utf-8"
  if (type ~ /unsigned char/) return ""
  if (type ~ /char|CStringA/) return "ansi"
  return ""
}

function Argument(piece, annotation, type, name, line, encoding, unit) {
  gsub(/[ \n]+/, " ", piece)
  sub(/^ /, "", piece)
  annotation = ""
  if (match(piece, /^_[A-Z][A-Za-z_]*_(\([^()]*\))? /)) {
    annotation = substr(piece, 1, RLENGTH - 1)
    piece = substr(piece, RLENGTH + 1)
  }
  match(piece, /[A-Za-z0-9_]+$/)
  name = substr(piece, RSTART)
  type = substr(piece, 1, RSTART - 1)
  sub(/ $/, "", type)
  line = "{\"name\": " Quoted(name) ", \"type\": " Quoted(type) ", \"direction\": \"" Direction(annotation, type) "\""
  line = line ", \"optional\": " (annotation ~ /_opt/ ? "true" : "false")
  encoding = Encoding(type, about[name])
  if (encoding != "") line = line ", \"encoding\": \"" encoding "\""
  unit = Unit(name, type, about[name])
  if (unit != "") line = line ", \"unit\": \"" unit "\""
  return line ", \"text\": " Quoted(about[name]) "}"
}

# Splits the list of arguments at the commas outside brackets.
function Arguments(list, i, one, depth, piece, result) {
  for (i = 1; i <= length(list); ++i) {
    one = substr(list, i, 1)
    if (one ~ /[(<]/) ++depth
    if (one ~ /[)>]/) --depth
    if (one == "," && depth == 0) {
      result = result (result == "" ? "" : ",\n      ") Argument(piece)
      piece = ""
    } else {
      piece = piece one
    }
  }
  if (piece ~ /[^ \n]/) result = result (result == "" ? "" : ",\n      ") Argument(piece)
  return result
}

function Forget(name) {
  summary = result = raises = ordinal = current = ""
  for (name in about) delete about[name]
}

/@addtogroup / {
  sub(/.*@addtogroup [^ ]+ /, "")
  group = $0
  next
}
/^\/\/\// {
  sub(/^\/\/\/ ?/, "")
  if (/^@brief /) {
    current = "summary"
    sub(/^@brief /, "")
    summary = $0
  } else if (/^@param/) {
    sub(/^@param(\[[a-z,]*\])? +/, "")
    current = $1
    sub(/^[^ ]+ +/, "")
    count = split(current, names, ",")
    for (i = 1; i <= count; ++i) about[names[i]] = $0
  } else if (/^@return/) {
    current = "result"
    sub(/^@return +/, "")
    result = result (result == "" ? "" : " ") $0
  } else if (/^@retval/) {
    current = "result"
    sub(/^@retval +/, "")
    result = result (result == "" ? "" : "; ") $0
  } else if (/^@exception/) {
    current = ""
    raises = raises (raises == "" ? "" : ", ") "\"" $2 "\""
  } else if (/^@ordinal/) {
    gsub(/[^0-9]/, "")
    ordinal = $0
  } else if (/^ *$/ || /^@/) {
    current = ""
  } else if (current == "summary") {
    summary = summary " " $0
  } else if (current == "result") {
    result = result " " $0
  } else if (current != "") {
    count = split(current, names, ",")
    for (i = 1; i <= count; ++i) about[names[i]] = about[names[i]] " " $0
  }
  next
}
/^ZERATOOLS_API/ || declaration != "" {
  declaration = declaration $0 "\n"
  if (!/;/) next
  match(declaration, /ZERATOOLS_API\([^)]*\)/)
  type = substr(declaration, RSTART + 14, RLENGTH - 15)
  match(declaration, /ZERA_TOOLS_[A-Z0-9_]+\(/)
  name = substr(declaration, RSTART, RLENGTH - 1)
  list = substr(declaration, RSTART + RLENGTH)
  sub(/\);[ \n]*$/, "", list)
  if (list == "void") list = ""
  order[++exports] = name
  number[name] = ordinal
  entry[name] = "    \"ordinal\": " ordinal ",\n    \"group\": " Quoted(group) ",\n    \"summary\": " Quoted(summary) \
    ",\n    \"result\": {\"type\": " Quoted(type) ", \"text\": " Quoted(result) "},\n    \"raises\": [" raises "]" \
    ",\n    \"arguments\": [" (list == "" ? "" : "\n      " Arguments(list) "\n    ") "]"
  declaration = ""
  Forget()
  next
}

# The export with the other kind of text. A name alone does not make a pair: the numbers tell.
function Pair(name, other, distance) {
  if (!(other in number)) return ""
  distance = number[other] - number[name]
  return distance == 1000 || distance == -1000 || (number[name] >= 200 && number[name] < 210) ? other : ""
}
function Partner(name, stem) {
  stem = name
  if (!sub(/_(UC|MBC)$/, "", stem)) return Pair(name, name "_UC")
  if (name ~ /_MBC$/) return Pair(name, stem "_UC")
  return stem in number ? Pair(name, stem) : Pair(name, stem "_MBC")
}
END {
  print "{\n\"library\": \"ZERATools.dll\",\n\"version\": \"" version "\","
  print "\"anyMayRaise\": [\"CMemoryException\"],\n\"exports\": ["
  for (i = 1; i <= exports; ++i) {
    name = order[i]
    partner = Partner(name)
    print "  {\n    \"name\": \"" name "\",\n    \"partner\": " (partner == "" ? "null" : "\"" partner "\"") ",\n" \
      entry[name] "\n  }" (i < exports ? "," : "")
  }
  print "]\n}"
}
