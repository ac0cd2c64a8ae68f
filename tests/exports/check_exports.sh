#!/usr/bin/env bash
# Compares the dynamic symbols of the shared library with the interface list zt/exports.txt.
#   check_exports.sh LIBRARY EXPORTS_FILE
set -euo pipefail
lib=$1 list=$2

nm -D -C --defined-only "$lib" | cut -d' ' -f3- | awk -v list="$list" '
  BEGIN {
    while ((getline line < list) > 0) {
      if (line ~ /^#/ || line == "") continue
      kind = substr(line, 1, index(line, " ") - 1)
      name = substr(line, index(line, " ") + 1)
      n++; kinds[n] = kind; names[n] = name; seen[n] = 0
    }
  }
  {
    sym = $0
    sub(/^(vtable for |typeinfo for |typeinfo name for |VTT for |guard variable for )/, "", sym)
    owner = 0
    for (i = 1; i <= n; i++) {
      if ((kinds[i] == "class" && (sym == names[i] || index(sym, names[i] "::") == 1)) ||
          (kinds[i] == "function" && sym == names[i])) { owner = i; break }
    }
    if (owner) seen[owner]++
    else { print "exported but not in the interface: " $0; bad = 1 }
  }
  END {
    for (i = 1; i <= n; i++) if (!seen[i]) { print "missing export: " kinds[i] " " names[i]; bad = 1 }
    if (!bad) print "exports match: " n " entries"
    exit bad
  }'
