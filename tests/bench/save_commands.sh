#!/bin/sh
# The fifteen commands of OK, each through a shell of its own.
save() {
  /bin/sh -c "regmux create 'root/vexa/agent/$1'"
  /bin/sh -c "regmux set 'root/vexa/agent/$1' '$2'"
}

export LD_LIBRARY_PATH=/etc/vexaagent/lib
save CurrentGateway 192.168.10.5
save BackupGateway 192.168.10.6
save Interval_min 1440
save LogLevel 0
save DelayScope_min 10
save GetGroupsFromDHCP 0
save PreAssignGroups 'MG="floor2";P1="lab";SALES="north"'
/bin/sh -c 'regmux commit'
