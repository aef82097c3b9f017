# Sourced by the Wine benchmarks: finding the processes of this Wine prefix.

# The processes of this Wine prefix ($WINEPREFIX) with the given name, a
# regular expression matched against the whole name (other prefixes on the
# machine may run the same programs). The kernel keeps 15 characters of a
# process name, and a Windows process is named after its program.
prefix_pids() {
  local p name=$1
  for p in $(pgrep -x "${name:0:15}" || true); do
    tr '\0' '\n' <"/proc/$p/environ" 2>/dev/null | grep -qx "WINEPREFIX=$WINEPREFIX" && echo "$p"
  done
  return 0
}

# Processor time of all threads of a process, in nanoseconds (printed as an
# integer: the sum passes what awk would print exactly).
ticks() { cat /proc/"$1"/task/*/schedstat 2>/dev/null | awk '{n += $1} END {printf "%.0f\n", n}'; }
