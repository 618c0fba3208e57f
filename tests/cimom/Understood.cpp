#include "Understood.hpp"

#include "OW_CIMException.hpp"
#include "binary/Reply.hpp"
#include "client/HTTPReply.hpp"
#include "xml/Reply.hpp"

#include <memory>
#include <stdexcept>

using namespace OpenWBEM;

namespace {

/** A connection that delivers the given bytes and then ends. */
class Received : public Stream {
public:
    explicit Received(const std::string& bytes)
        : m_left(bytes) {}

    bool send(std::string_view) override { return true; }
    std::size_t receive(char* to, std::size_t size, const Deadline&) override {
        const std::size_t n = m_left.copy(to, size);
        m_left.remove_prefix(n);
        return n;
    }
    bool isQuiet() override { return false; }

private:
    std::string_view m_left;
};

std::string textBetween(const std::string& text, const std::string& before, const std::string& after) {
    const std::size_t at = text.find(before);
    if (at == std::string::npos)
        throw std::logic_error("no " + before);
    const std::size_t begin = at + before.size();
    return text.substr(begin, text.find(after, begin) - begin);
}

void readBinary(io::Source& body, const std::string& method, Understood& result) {
    if (method == "EnumerateInstances") {
        CIMInstanceEnumeration all = binary::readInstances(body);
        while (all.hasMoreElements())
            result.instances.push_back(all.nextElement());
    } else if (method == "GetInstance") {
        result.instances.push_back(binary::readInstance(body));
    } else {
        binary::readDone(body);
    }
}

void readXml(io::Source& body, const std::string& method, UInt32 messageId, Understood& result) {
    io::Window window(body);
    xml::Reply reply(window, messageId, method.c_str());
    for (CIMInstance instance(CIMNULL); reply.next(instance);)
        result.instances.push_back(instance);
    reply.finish();
}

void readReply(const std::string& request, const std::string& bytes, Understood& result) {
    const std::string method = textBetween(request, "CIMMethod: ", "\r\n");
    std::unique_ptr<Stream> kept;
    HTTPReply reply(std::make_unique<Received>(bytes), kept);
    reply.message().readHead();
    reply.expectBody();
    try {
        if (request.find("application/x-owbinary") != std::string::npos)
            readBinary(reply, method, result);
        else
            readXml(reply, method,
                    static_cast<UInt32>(std::stoul(textBetween(request, "<MESSAGE ID=\"", "\""))), result);
    } catch (const Exception&) {
        reply.throwReportedError();
        throw;
    }
    reply.finish();
}

} // namespace

Understood understood(const std::string& request, const std::string& reply) {
    Understood result;
    try {
        readReply(request, reply, result);
    } catch (const CIMException& e) {
        const char* const description = e.getDescription();
        result.error = std::to_string(e.getErrNo()) + " " + (description ? description : "");
    } catch (const Exception& e) {
        result.error = std::string(e.type()) + ": " + e.getMessage();
    }
    return result;
}
