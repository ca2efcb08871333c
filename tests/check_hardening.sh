#!/usr/bin/env bash
# Checks that programs are hardened as release builds are to be: nothing of the linker's tables can be written once they
# run, stacks are guarded, and the C library's calls check their buffers.
#
#   tests/check_hardening.sh PROGRAM...
set -euo pipefail

failed=0
for program in "$@"; do
  needs() {
    grep -qE "$2" <<<"$facts" && return
    echo "$program: $1 is missing" >&2
    failed=1
  }
  facts=$(readelf --wide --segments --dynamic --dyn-syms "$program")
  needs 'read-only relocation' 'GNU_RELRO'
  needs 'binding ahead of the start' 'BIND_NOW|FLAGS_1.*NOW'
  needs 'a position that the system chooses' 'DYN \(Position|FLAGS_1.*PIE'
  needs 'the guard of stacks' '__stack_chk_fail'
  needs 'checks of buffers' '__(memcpy|[a-z]*printf|memset|strcpy|read)_chk'
done
exit $failed
