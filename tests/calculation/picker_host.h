#pragma once

#include "panel_host.h"

#include "calculation/form_select_serial.h"

/// Clicks CmdPicSerial and returns the picker.
calculation::FormSelectSerial& open(PanelHost& host);
void choose(calculation::FormSelectSerial& picker);
/// Closes any picker that a test has left open.
void closePickers();

extern const QList<double> someDeductions;
