#ifndef TESTS_CIMOM_SESSION_RUN_HPP
#define TESTS_CIMOM_SESSION_RUN_HPP
#include "http/Session.hpp"
#include "objects/ObjectManager.hpp"
#include "protocol/BinaryHandler.hpp"
#include "protocol/XmlHandler.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>

/** Runs sessions, one after the other, each with a client that sends bytes, shuts its side and reads. */
class SessionRun {
public:
    /** @param manager must outlive this object */
    explicit SessionRun(cimom::ObjectManager& manager)
        : m_binary(manager)
        , m_xml(manager) {}

    /**
     * All that a client gets for what it sends, up to the end of the connection. Returns when the session
     * has ended, and throws std::logic_error when its connection is gone but the session is not.
     */
    std::string answerTo(std::string_view sent) {
        namespace asio = boost::asio;
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            throw std::runtime_error("socketpair");
        const asio::generic::stream_protocol local(AF_UNIX, 0);
        Socket client(m_io, local, ends[0]);
        std::make_shared<cimom::Session>(Socket(m_io, local, ends[1]), m_context)->start();
        asio::async_write(client, asio::buffer(sent), [&client](const auto&, std::size_t) {
            boost::system::error_code ignored;
            client.shutdown(Socket::shutdown_send, ignored);
        });
        std::string received;
        asio::async_read(client, asio::dynamic_buffer(received), [](const auto&, std::size_t) {});
        m_io.restart();
        m_io.run();
        if (!m_context->sessions.empty())
            throw std::logic_error("the session has not ended");
        return received;
    }

private:
    using Socket = cimom::Session::Socket;

    const cimom::BinaryHandler m_binary;
    const cimom::XmlHandler m_xml;
    boost::asio::io_context m_io{1};
    const std::shared_ptr<cimom::SessionContext> m_context =
        std::make_shared<cimom::SessionContext>(cimom::SessionContext{m_binary, m_xml, cimom::Limits()});
};

#endif
