#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <ranges>
#include <string>
#include <unordered_map>
#include <vector>
