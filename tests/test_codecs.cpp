// Codec settings: the part of the writers that the VoIP profiles and the
// dial-plan profiles share (what the parser stores: tests/cases/).
#include "support.h"

#include <cfgparser.h>
#include <gtest/gtest.h>

namespace {

// codec_params_save continues inside a node opened by its caller and hands
// back the running count.
TEST(CodecWriters, SharedParamsContinueACallersNode)
{
    const codecs_cfg_t codecs{};
    const auto out = support::write([&](uint8_t **c) {
        **c = 2;
        ++*c;
        uint32_t running = setUInt16ValueInMsg(c, "config.test", 33, 1);
        const uint8_t *before = *c;
        const uint32_t after = codec_params_save(c, &codecs, running);
        EXPECT_EQ(after - running, static_cast<uint32_t>(*c - before));
        **c = 0;
        return after + 1;
    });
    ASSERT_EQ(out.message.nodes.size(), 1u);
    EXPECT_EQ(out.node().params.size(), 33u); // the params the two codec nodes share
}

} // namespace
