#pragma once

#include "panel_host.h"

#include "calculation/form_select_serial.h"

/// Presses CmdPicSerial and waits for the picker.
calculation::FormSelectSerial& open(PanelHost& host);
void choose(calculation::FormSelectSerial& picker);
/// Closes a picker that a test has left open.
void closePickers();

extern const QList<double> someDeductions;
