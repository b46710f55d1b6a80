// What nearly every test needs: GoogleTest, texts and lists of them, tuples for tables of cases,
// Shift-JIS literals, and folders of its own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "base/sjis_literal.h"
#include "support/home.h"

using namespace tq::literals;
using namespace tq::test;
using Texts = std::vector<std::string>;
