#pragma once
#include "toolkit/testing/picture.h"
