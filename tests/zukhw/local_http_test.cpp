// Questions to a server behind a socket file.
#include "scanners/zukhw/local_http.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <thread>

#include "platform/file_descriptor.h"
#include "tests/support/temporary_folder.h"

namespace {

using std::chrono::milliseconds;
constexpr milliseconds kPlenty(60000);

struct AnswerCase {
    const char* answer;
    std::optional<std::string> body;
};

TEST(HttpAnswer, HasItsBodyInOnePieceOrInParts) {
    const AnswerCase cases[] = {
        {"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabcd", "abc"},
        {"HTTP/1.0 200 OK\r\n\r\nto the end", "to the end"},
        {"HTTP/1.1 200 OK\r\ntransfer-ENCODING: chunked\r\n\r\n3\r\nabc\r\nA;x=1\r\n0123456789\r\n0\r\n\r\n",
         "abc0123456789"},
        {"HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n", std::nullopt},
        {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nabc", std::nullopt},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n", std::nullopt},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\nabc\r\n", std::nullopt},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabcd\r\n", std::nullopt},
        {"HTTP/1.1 200 OK\r\n", std::nullopt},
        {"\r\n\r\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const AnswerCase& c : cases) EXPECT_EQ(c.body, bodyOfHttpAnswer(c.answer)) << c.answer;
}

// Answers one question; an empty answer stands for silence.
class Server {
  public:
    explicit Server(std::string answer) : answer_(std::move(answer)) {
        sockaddr_un name = {};
        name.sun_family = AF_UNIX;
        std::strncpy(name.sun_path, path().c_str(), sizeof name.sun_path - 1);
        listening_.reset(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(0, ::bind(listening_.get(), reinterpret_cast<sockaddr*>(&name), sizeof name));
        EXPECT_EQ(0, ::listen(listening_.get(), 1));
        thread_ = std::thread([this] { serve(); });
    }
    ~Server() {
        if (thread_.joinable()) thread_.join();
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::string path() const { return folder_.path() + "/socket"; }
    // Once the answer is there.
    const std::string& question() {
        thread_.join();
        return question_;
    }

  private:
    void serve() {
        const FileDescriptor client(::accept(listening_.get(), nullptr, nullptr));
        char byte = 0;
        while (::recv(client.get(), &byte, 1, 0) == 1) {
            question_ += byte;
            if (answer_.empty() || byte != '?') continue;
            ::send(client.get(), answer_.data(), answer_.size(), MSG_NOSIGNAL);
            return;
        }
    }

    TemporaryFolder folder_;
    std::string answer_, question_;
    FileDescriptor listening_;
    std::thread thread_;
};

TEST(LocalPost, SendsTheQuestionAndReturnsTheAnswer) {
    Server server("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nyes");
    EXPECT_EQ("yes", postLocally(server.path(), "text/plain", "well?", kPlenty));
    EXPECT_EQ(
        "POST / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nContent-Type: text/plain\r\n"
        "Content-Length: 5\r\n\r\nwell?",
        server.question());
}

TEST(LocalPost, DoesNotWaitForLongerThanTheLimit) {
    Server server("");
    EXPECT_FALSE(postLocally(server.path(), "text/plain", "well?", milliseconds(20)));
}

TEST(LocalPost, HasNoAnswerWithoutAServer) {
    const TemporaryFolder folder;
    EXPECT_FALSE(postLocally(folder.path() + "/socket", "text/plain", "well?", kPlenty));
    EXPECT_FALSE(postLocally(folder.file("socket", ""), "text/plain", "well?", kPlenty));
    EXPECT_FALSE(postLocally(std::string(1000, 'x'), "text/plain", "well?", kPlenty));
}

}  // namespace
