#!/usr/bin/env bash
# Checks that the component's library shows its entry points and the names of its own namespace, and nothing else:
# whatever the host defines must come from the host's libraries, or one process would have it twice.
# Usage: tools/check_exports.sh libzrcallouts.so
set -euo pipefail

library=$1
own='zrcallouts::[^ ].*'
names=$(nm -D --defined-only "$library" | cut -d ' ' -f 2- | c++filt)
foreign=$(grep -v -E "^[A-Za-z] (ZRDll(Init|Terminate|CreateComponent|Version)|((vtable|typeinfo|typeinfo name|VTT) for |construction vtable for |(non-)?virtual thunk to )?$own)$" <<<"$names" || true)
if [[ -n $foreign ]]; then
    echo "$library shows what is not its own:"
    echo "$foreign"
    exit 1
fi
for entry in ZRDllInit ZRDllTerminate ZRDllCreateComponent ZRDllVersion; do
    if ! grep -q "^T $entry$" <<<"$names"; then
        echo "$library lacks its entry point $entry"
        exit 1
    fi
done
