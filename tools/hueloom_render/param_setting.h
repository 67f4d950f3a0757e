// Setting an instance's parameters from the texts of --set and of state files:
// "NAME=VALUE", or "NAME=VALUE@FRAME,VALUE@FRAME,..." for keys that the host interpolates.
// Names are those the plug-in gave its parameters, in any case; values are read by the
// parameter's type and checked against its range before anything is set.
#pragma once

#include "host/instance.h"
#include "host/param.h"

#include <string>
#include <vector>

namespace vl1::render_tool {

/// Whether a setting may change the parameter: it holds a value (no button, group or page)
/// and is no custom parameter (the state has --state-in).
bool is_settable(const ofxhost::param& p);

/// The names of the settable parameters, in definition order.
std::vector<std::string> settable_names(ofxhost::instance& inst);

/// The parameter a user's name means: the exact name, else the one name that matches in any
/// case, else the one script name that does. Throws render_error (usage) for an unknown,
/// ambiguous or unsettable name, naming the parameters there are.
ofxhost::param& find_param(ofxhost::instance& inst, const std::string& name);

/// One value for the parameter's type: a number (whole for integers), true/false/on/off/yes/no
/// or 0/1 for a boolean, an option's text or index for a choice, text as it stands for a
/// string, numbers separated by ':' (or ',') for colours and 2D/3D values. Throws
/// render_error (usage) for a value that doesn't read or lies outside the range.
ofxhost::param_value parse_value(const ofxhost::param& p, const std::string& text);

/// Applies one setting; the parameter's earlier value and keys are replaced. Throws
/// render_error (usage), with the setting in the message, before changing anything.
void apply_setting(ofxhost::instance& inst, const std::string& setting);

/// The setting that gives the parameter its present value and keys again, as apply_setting
/// reads it; empty for a parameter that isn't settable or whose text can't stand on a line.
std::string format_setting(const ofxhost::param& p);

}  // namespace vl1::render_tool
