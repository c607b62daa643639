#include "JsonText.h"

#include <gtest/gtest.h>

#include <limits>

namespace genvara {
namespace {

/// Every kind of value, and containers in containers.
std::string Written(std::size_t indent) {
    JsonText json(indent);
    json.BeginObject().Member("a", 1).Key("b").BeginArray().Value(0.1).Value(true).BeginObject().EndObject();
    json.BeginArray().EndArray().EndArray().Member("c", "x\"\n").Key("d").Raw("null").EndObject();
    return json.Text();
}

TEST(JsonText, StandsOnOneLine) {
    EXPECT_EQ(Written(0), R"({"a":1,"b":[0.1,true,{},[]],"c":"x\"\n","d":null})");
}

TEST(JsonText, OrOnALineForEachMemberAndElement) {
    EXPECT_EQ(Written(2), R"({
  "a": 1,
  "b": [
    0.1,
    true,
    {},
    []
  ],
  "c": "x\"\n",
  "d": null
})");
}

TEST(JsonText, IsSoundWhateverAValueIs) {
    JsonText json;
    json.BeginArray();
    json.Value(std::numeric_limits<double>::infinity()).Value(std::numeric_limits<double>::quiet_NaN());
    json.Value(1e300).Value(-2147483647 - 1).Value("\xFF").Value(std::vector<double>{1.5, 2.5}).EndArray();
    EXPECT_EQ(json.Text(), "[null,null,1e+300,-2147483648,\"\uFFFD\",[1.5,2.5]]");
}

}  // namespace
}  // namespace genvara
