Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

control.DisarmGate
Same "a setting is back", session.Config.Value("$User\ZORVA\Refresh_Screen"), "MINE"
' On the road of failure this one is written under another spelling, and so isn't.
Same "another isn't", session.Config.Value("$User\LIFE_CYCLE\SwitchToLatestForceCheckOut"), "TRUE"
Same "its old value stands under the other spelling", _
  session.Config.Value("$User\LIFE CYCLE\SwitchToLatestForceCheckOut"), "MINE"

EndOfScript
