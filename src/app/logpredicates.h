// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/predicatechoice.h"
#include "settings/predicateeditor.h"

class Clock;

/// Joins the predicate language to the windows that use it. `clock` gives the moment and the time
/// zone that a predicate is built in.
PredicateBuilder logPredicates(const Clock& clock);
PredicateCheck predicateCheck(const Clock& clock);
