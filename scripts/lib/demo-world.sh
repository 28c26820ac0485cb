# The demo's world, sourced by scripts/demo: an install folder with its platform.ini, the
# settings file, the engineer list, the server's store folder, and three emulated scanners.
# shellcheck shell=bash

# The scanners, by index 0..2: emulator type, name, COM port, ID (also the engineer's
# number), engineer, settings section, kind of records file.
scanner_types=(opl opn cs1504)
scanner_names=("OPL 972x" "OPN 2001" "CS 1504")
scanner_coms=(3 4 5)
scanner_ids=(101 102 103)
scanner_engineers=("ALAN PARK" "BETH COLE" "CARL DEAN")
scanner_sections=(9725 1234 1504)
scanner_kinds=(opl csp csp)
# Filled by dockscanner: what each scanner holds at the start.
scanner_held=()
scanner_good=()
scanner_test=()
scanner_invalid=()

# The store folder that stands for \\127.0.0.1\tagstore.
storefolder() { echo "$1/tagstore"; }
scannerfile() { echo "$1/scanners/${scanner_types[$2]}.$3"; }

# Stops one process this demo started: SIGTERM, then SIGKILL after five seconds.
stoppid() {
  local pid="$1"
  kill -0 "$pid" 2>/dev/null || { wait "$pid" 2>/dev/null || true; return 0; }
  kill "$pid" 2>/dev/null || true
  for _ in $(seq 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
  kill -0 "$pid" 2>/dev/null && kill -KILL "$pid" 2>/dev/null
  wait "$pid" 2>/dev/null || true
}

# writeworld DIR DISPLAY: platform.ini, TAGSTORE.INI and ENGLST.TXT for the install in DIR.
writeworld() {
  local dir="$1" display="$2" i
  mkdir -p "$dir/drive_c/tarnbc" "$(storefolder "$dir")" "$dir/scanners"

  {
    echo "; Written by scripts/demo: drive C and the store share inside this folder, the"
    echo "; emulated scanners' ports, and the message box transcript."
    echo "[drives]"
    echo "C=$dir/drive_c"
    echo "[ports]"
    for i in 0 1 2; do echo "COM${scanner_coms[$i]}=$(scannerfile "$dir" "$i" port)"; done
    echo "[shares]"
    printf '%s=%s\n' '\\127.0.0.1\tagstore' "$(storefolder "$dir")"
    echo "[dialogs]"
    # Offscreen nobody can click: every box takes its default answer.
    [ -z "$display" ] && echo "answers=answers.txt"
    echo "transcript=transcript.txt"
  } > "$dir/platform.ini"
  : > "$dir/answers.txt"

  # The settings file, written by the program's own profile tool. FIRST RUN=1 skips the
  # first-run screens; READDELAY stays absent (no read delay).
  local ini="$dir/TAGSTORE.INI" tool="$dir/vexal-ini"
  for i in 0 1 2; do
    "$tool" set "$ini" "${scanner_sections[$i]}" USED 1
    "$tool" set "$ini" "${scanner_sections[$i]}" PORT "${scanner_coms[$i]}#"
    "$tool" set "$ini" "${scanner_sections[$i]}" AUTO 1
    "$tool" set "$ini" "${scanner_sections[$i]}" AUTOTIME 0
  done
  "$tool" set "$ini" SAVE TYPE 1
  "$tool" set "$ini" SAVE IP "127.0.0.1#"
  "$tool" set "$ini" SAVE TNO "007#"
  "$tool" set "$ini" FITTER TYPE 0
  "$tool" set "$ini" COMPANY NAME "Demo Motors Workshop#"
  "$tool" set "$ini" COMPANY USER "Service Desk#"
  "$tool" set "$ini" COMPANY TEL "01632 960123#"
  "$tool" set "$ini" COMPANY HOEMAIL "#"
  "$tool" set "$ini" MISC CHKROGUE "1#"
  "$tool" set "$ini" FIRST RUN 1

  {
    printf 'VEXAL engineer list\r\n'
    for i in 0 1 2; do
      printf '%06d,%06d,%s\r\n' "${scanner_ids[$i]}" "${scanner_ids[$i]}" "${scanner_engineers[$i]}"
    done
  } > "$dir/drive_c/tarnbc/ENGLST.TXT"
}

# Stored records (lines of an OPL 972x) in a scanner's state file.
heldrecords() { grep -c '^\(line\|record\)=' "$1" || true; }

# dockscanner DIR I DATE: writes scanner I's day of scans and starts its emulator; the
# emulator's pid is left in docked_pid.
dockscanner() {
  local dir="$1" i="$2" date="$3" counts
  local records state out
  records="$(scannerfile "$dir" "$i" records)"
  state="$(scannerfile "$dir" "$i" state)"
  out="$(scannerfile "$dir" "$i" out)"
  counts="$(scripts/lib/demo-scans "${scanner_kinds[$i]}" "$date" "${scanner_ids[$i]}" "$records")"
  read -r "scanner_good[$i]" "scanner_test[$i]" "scanner_invalid[$i]" <<< "$counts"

  # asuser (set by scripts/demo) runs it as the demo's ordinary user, or as it is.
  ${asuser[@]+"${asuser[@]}"} "$dir/scanner-emulator" --type "${scanner_types[$i]}" --link "$(scannerfile "$dir" "$i" port)" \
    --id "${scanner_ids[$i]}" --records "$records" --state "$state" > "$out" 2>&1 &
  docked_pid=$!
  for _ in $(seq 100); do
    grep -q '^ready ' "$out" 2>/dev/null && break
    kill -0 "$docked_pid" 2>/dev/null || { cat "$out" >&2; echo "scripts/demo: the ${scanner_names[$i]} emulator did not start" >&2; return 1; }
    sleep 0.1
  done
  grep -q '^ready ' "$out" || { echo "scripts/demo: the ${scanner_names[$i]} emulator is not ready after 10 s" >&2; return 1; }
  scanner_held[i]="$(heldrecords "$state")"
  printf '%-9s ID %s on COM%s (%s): %2s records: %s good, %s test, %s invalid\n' "${scanner_names[$i]}" \
    "${scanner_ids[$i]}" "${scanner_coms[$i]}" "${scanner_engineers[$i]}" "${scanner_held[$i]}" \
    "${scanner_good[$i]}" "${scanner_test[$i]}" "${scanner_invalid[$i]}"
}
