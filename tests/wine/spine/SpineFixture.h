// A test host with the built module loaded, for the tests of the selectors.
#pragma once

#include <gtest/gtest.h>

#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"

class SpineTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
        host.image() = testhost::Image(40, 30, 3);
        host.image().FillNoise(7);
    }
    void TearDown() override { EXPECT_EQ(host.log().faults, std::vector<std::string>{}); }

    FilterParameters* Parameters() { return host.ParametersAs<FilterParameters>(); }

    // In/out/mask rectangles of every delivery, as "top,left,bottom,right".
    std::vector<std::string> ServedRects() {
        std::vector<std::string> rects;
        for (const auto& serve : host.log().serves) {
            rects.push_back(Text(serve.request.inRect) + " " + Text(serve.request.outRect) + " " +
                            Text(serve.request.maskRect));
        }
        return rects;
    }

    static std::string Text(const VRect& r) {
        return std::to_string(r.top) + "," + std::to_string(r.left) + "," +
               std::to_string(r.bottom) + "," + std::to_string(r.right);
    }

    testhost::TestHost host;
};
