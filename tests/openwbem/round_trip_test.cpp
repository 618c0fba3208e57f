// The decoder inverts the encoder: random objects with a fixed seed.
#include "PieceSource.hpp"
#include "RandomObjects.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/ObjectWriter.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
using random_objects::RandomObjects;

std::string encoded(const CIMInstance& instance) {
    binary::Writer out;
    binary::write(out, instance);
    return out.release();
}

TEST(RoundTrip, PreservesEveryTypeOfValue) {
    RandomObjects generator(RandomObjects::Kind::binary);
    for (int type = CIMDataType::UINT8; type <= CIMDataType::EMBEDDEDINSTANCE; ++type) {
        for (int i = 0; i < 200; ++i) {
            const CIMValue value = generator.value(static_cast<CIMDataType::Type>(type), i % 2 == 0);
            binary::Writer out;
            binary::write(out, value);
            binary::Reader in(out.bytes().data(), out.bytes().size());
            binary::ObjectReader objects(in);
            const CIMValue back = objects.value();
            EXPECT_TRUE(in.atEnd());
            ASSERT_EQ(type, back.getType());
            EXPECT_EQ(value.isArray(), back.isArray());
            EXPECT_EQ(value.getArraySize(), back.getArraySize());
            EXPECT_EQ(value.toString(), back.toString());
            EXPECT_TRUE(value == back);
        }
    }
}

TEST(RoundTrip, PreservesEveryPartOfAnInstance) {
    RandomObjects generator(RandomObjects::Kind::binary);
    for (int i = 0; i < 500; ++i) {
        const std::string bytes = encoded(generator.instance());
        binary::Reader in(bytes.data(), bytes.size());
        EXPECT_TRUE(bytes == encoded(binary::ObjectReader(in).instance())) << i;
        EXPECT_TRUE(in.atEnd()) << i;
    }
}

TEST(RoundTrip, DoesNotDependOnTheSizesOfReads) {
    RandomObjects generator(RandomObjects::Kind::binary);
    std::string bytes;
    for (int i = 0; i < 20; ++i) {
        const std::string one = encoded(generator.instance());
        bytes += one + one; // the declarations of the second one are cached
    }
    for (const std::size_t piece : {1U, 7U, 1000U}) {
        PieceSource source(bytes, piece);
        binary::Reader in(source);
        binary::ObjectReader objects(in);
        std::string back;
        while (!in.atEnd())
            back += encoded(objects.instance());
        EXPECT_TRUE(bytes == back) << piece;
    }
}

} // namespace
