#!/bin/sh
# The commands of a start, each through a shell of its own, and then the bare window.
#
# usage: start_commands.sh COMMAND [ARGUMENT...]
run() {
  /bin/sh -c "$1" >/dev/null 2>&1
}

run 'locale | grep LC_CTYPE'
export LD_LIBRARY_PATH=/etc/vexaagent/lib
run '/usr/sbin/vexaagent -v'
for setting in CurrentGateway BackupGateway Interval_min LogLevel DelayScope_min GetGroupsFromDHCP \
  PreAssignGroups; do
  run "regmux get 'root/vexa/agent/$setting'"
done
unset LD_LIBRARY_PATH
exec "$@"
