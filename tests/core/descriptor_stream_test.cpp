#include "platform/descriptor_stream.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/temporary_folder.h"

namespace {

FileDescriptor openFile(const std::string& path) {
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

TEST(DescriptorStream, GivesEachByteAsItIs) {
    const TemporaryFolder folder;
    std::string content;
    for (int byte = 0; byte < 256; ++byte) content.push_back(static_cast<char>(byte));
    DescriptorStream stream(openFile(folder.file("bytes", content)));
    for (int byte = 0; byte < 256; ++byte) EXPECT_EQ(byte, stream.read());
}

TEST(DescriptorStream, IsNegativeAtTheEndAndStaysSo) {
    const TemporaryFolder folder;
    DescriptorStream stream(openFile(folder.file("one", "x")));
    stream.read();
    EXPECT_LT(stream.read(), 0);
    EXPECT_LT(stream.read(), 0);
}

TEST(DescriptorStream, ReadsMoreThanItsBufferHolds) {
    const TemporaryFolder folder;
    std::string content;
    while (content.size() < 1000000) content += std::to_string(content.size()) + " ";
    DescriptorStream stream(openFile(folder.file("long", content)));
    std::string read;
    for (int byte = stream.read(); byte >= 0; byte = stream.read()) read.push_back(static_cast<char>(byte));
    EXPECT_EQ(content, read);
}

TEST(DescriptorStream, AReadErrorIsTheEnd) {
    const TemporaryFolder folder;
    DescriptorStream stream(openFile(folder.path()));  // a directory cannot be read
    EXPECT_LT(stream.read(), 0);
}

TEST(DescriptorStream, AClosedStreamHasEnded) {
    const TemporaryFolder folder;
    DescriptorStream stream(openFile(folder.file("one", "x")));
    stream.close();
    EXPECT_LT(stream.read(), 0);
}

}  // namespace
