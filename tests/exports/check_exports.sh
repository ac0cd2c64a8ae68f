#!/usr/bin/env bash
# Compares the exported symbols of the shared library with the interface list zt/exports.txt:
# the dynamic symbols of libzt.so, or the export table of zt.dll (read with OBJDUMP, which
# defaults to the MinGW-w64 one, and demangled with the c++filt beside it). A "member" entry names
# one symbol of a listed class that must be exported, as a sample that the whole class is.
#   check_exports.sh LIBRARY EXPORTS_FILE [OBJDUMP]
set -euo pipefail
lib=$1 list=$2 objdump=${3:-x86_64-w64-mingw32-objdump}

exported() {
  case "$lib" in
    *.dll)
      # The name pointer table lists one "[ordinal] name" line per export.
      "$objdump" -p "$lib" | sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/p' |
        sed -n 's/^[[:space:]]*\[ *[0-9]*\] //p' | "${objdump%objdump}c++filt" ;;
    *) nm -D -C --defined-only "$lib" | cut -d' ' -f3- ;;
  esac
}

# A DLL also exports the run-time type information of the bases of its exported classes (and of
# the standard exceptions it throws), which dynamic_cast and catch across the DLL need: only there,
# type information of an unlisted class is accepted.
case "$lib" in *.dll) rtti_of_bases=1 ;; *) rtti_of_bases=0 ;; esac

exported | awk -v list="$list" -v rtti_of_bases="$rtti_of_bases" '
  BEGIN {
    while ((getline line < list) > 0) {
      if (line ~ /^#/ || line == "") continue
      kind = substr(line, 1, index(line, " ") - 1)
      name = substr(line, index(line, " ") + 1)
      if (kind == "member") { m++; members[m] = name; found[m] = 0; continue }
      n++; kinds[n] = kind; names[n] = name; seen[n] = 0
    }
  }
  {
    sym = $0
    rtti = sym ~ /^typeinfo (name )?for /
    sub(/^(vtable for |typeinfo for |typeinfo name for |VTT for |guard variable for )/, "", sym)
    owner = 0
    for (i = 1; i <= n; i++) {
      if ((kinds[i] == "class" && (sym == names[i] || index(sym, names[i] "::") == 1)) ||
          (kinds[i] == "function" && sym == names[i])) { owner = i; break }
    }
    for (i = 1; i <= m; i++) if (sym == members[i]) found[i]++
    if (owner) seen[owner]++
    else if (!(rtti && rtti_of_bases)) { print "exported but not in the interface: " $0; bad = 1 }
  }
  END {
    for (i = 1; i <= n; i++) if (!seen[i]) { print "missing export: " kinds[i] " " names[i]; bad = 1 }
    for (i = 1; i <= m; i++) if (!found[i]) { print "missing export: member " members[i]; bad = 1 }
    if (!bad) print "exports match: " n " entries"
    exit bad
  }'
