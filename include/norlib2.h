#pragma once
// Every public class of the library (and, through norlib1.h, of the base module).
#include "norlib1.h"
#include "norlib2api.h"
#include "bclib2.h"
#include "bcarrlist.h"
#include "bciter.h"
#include "bcdllist.h"
#include "bchash.h"
#include "bcstack.h"
#include "bcdepdata.h"
#include "bcmemdata.h"
#include "bcnumdata.h"
