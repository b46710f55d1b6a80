// What nearly every test needs: GoogleTest, strings and lists of them, tuples for tables of cases,
// and Shift-JIS literals.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "base/sjis_literal.h"

using namespace tq::literals;
using Texts = std::vector<std::string>;
