#include "snmp/session/Session.hpp"

#include <algorithm>
#include <exception>
#include <utility>

namespace snmp {

namespace asio = boost::asio;
using agentx::Header;
using agentx::PduType;
using agentx::Refusal;
using agentx::Response;
using std::chrono::steady_clock;

namespace {

const char* const description = "owb-agentx";

/** Seconds that the master waits for a response before it repeats the request. Reads take at most answerTime;
 * writes may take longer. */
constexpr std::uint8_t requestTimeout = 2;

/** Of each registration. In the default context the lowest wins; most agents use 127. */
constexpr std::uint8_t priority = 100;

bool isError(const Response& response, Refusal refusal) {
    return response.error == static_cast<std::uint16_t>(refusal);
}

} // namespace

std::chrono::milliseconds pauseAfter(unsigned failures, const Settings& settings) {
    std::chrono::milliseconds pause = settings.firstPause;
    for (; failures > 0 && pause < settings.longestPause; --failures)
        pause *= 2;
    return std::min(pause, settings.longestPause);
}

Session::Session(asio::io_context& io, Objects& objects, Settings settings)
    : m_io(io)
    , m_objects(objects)
    , m_settings(std::move(settings))
    , m_timer(io) {}

Session::~Session() {
    if (m_connection)
        m_connection->close();
}

void Session::start() {
    limitTime(steady_clock::duration::zero());
}

void Session::connect() {
    m_state = State::connecting;
    limitTime(m_settings.replyTime);
    m_connection = std::make_shared<Connection>(m_io, static_cast<Connection::User&>(*this));
    m_responder = std::make_shared<Responder>(m_connection, m_objects, m_settings.context);
    m_connection->connect(m_settings.master.endpoint);
}

void Session::onConnected() {
    m_session = 0;
    ask(State::opening, agentx::openPdu(nextHeader(), requestTimeout, description));
}

void Session::onPdu(const Header& header, std::string_view payload) {
    m_lastHeard = steady_clock::now();
    if (header.type == PduType::close) {
        m_connection->end("session closed: " + agentx::readClose(header, payload));
        return;
    }
    if (header.type != PduType::response) {
        m_responder->handle(header, payload);
        return;
    }
    const bool isAwaited =
        m_state == State::opening || m_state == State::registering || m_state == State::pinging;
    if (isAwaited && header.packet == m_packet)
        onResponse(header, agentx::readResponse(header, payload));
}

void Session::onResponse(const Header& header, const Response& response) {
    m_objects.setUpTime(response.upTime);
    if (m_state == State::opening)
        onOpened(header, response);
    else if (isError(response, Refusal::notOpen))
        m_connection->end("session closed");
    else if (m_state == State::registering)
        onRegistered(response);
    else
        rest();
}

void Session::onOpened(const Header& header, const Response& response) {
    if (response.error != 0) {
        m_connection->end("session refused: " + agentx::errorText(response.error));
        return;
    }
    m_session = header.session;
    m_responder->open(m_session);
    m_registrations.clear();
    for (const Oid& subtree : m_objects.subtrees())
        m_registrations.push_back({subtree, nullptr});
    for (const Module& module : m_objects.modules())
        m_registrations.push_back({module.id, module.description});
    m_nextRegistration = 0;
    m_registered = 0;
    registerNext();
}

void Session::registerNext() {
    if (m_nextRegistration == m_registrations.size()) {
        onReady();
        return;
    }
    const Registration& next = m_registrations[m_nextRegistration];
    const Header header = nextHeader();
    ask(State::registering,
        next.description ? agentx::addAgentCapsPdu(header, m_settings.context, next.id, next.description)
                         : agentx::registerPdu(header, m_settings.context, priority, next.id));
}

void Session::onRegistered(const Response& response) {
    const Registration& done = m_registrations[m_nextRegistration++];
    const bool isSubtree = done.description == nullptr;
    const std::string failure =
        (isSubtree ? "cannot register " : "cannot add capabilities of ") + text(done.id);
    if (response.error == 0) {
        m_registered += isSubtree ? 1 : 0;
        m_refused.erase(failure);
    } else if (std::exchange(m_refused[failure], response.error) != response.error) {
        report(failure + ": " + agentx::errorText(response.error));
    }
    registerNext();
}

void Session::onReady() {
    const auto isSubtree = [](const Registration& each) { return each.description == nullptr; };
    const auto all = std::count_if(m_registrations.begin(), m_registrations.end(), isSubtree);
    m_readySince = steady_clock::now();
    m_isLossReported = false;
    rest();
    report(std::to_string(m_registered) + " of " + std::to_string(all) + " subtrees registered");
}

void Session::rest() {
    m_state = State::idle;
    limitTime(m_settings.idleTime);
}

/** Requests of the master do not set the timer again, which would take longer than to answer them. */
void Session::pingIfQuiet() {
    const steady_clock::duration quiet = steady_clock::now() - m_lastHeard;
    if (quiet < m_settings.idleTime)
        limitTime(m_settings.idleTime - quiet);
    else
        ask(State::pinging, agentx::pingPdu(nextHeader(), m_settings.context));
}

Header Session::nextHeader() {
    Header header;
    header.session = m_session;
    header.packet = ++m_packet;
    return header;
}

/** Sends a request to the master, whose reply ends the state. */
void Session::ask(State state, const std::string& pdu) {
    m_state = state;
    limitTime(m_settings.replyTime);
    m_connection->send(pdu);
}

void Session::limitTime(steady_clock::duration time) {
    m_timer.expires_after(time);
    m_timer.async_wait([this](const boost::system::error_code& error) {
        // A wait that was due when the timer was set again gets no error.
        if (error || m_timer.expiry() > steady_clock::now())
            return;
        try {
            onTimeout();
        } catch (const std::exception& e) {
            if (m_connection)
                m_connection->close();
            onEnd(e.what());
        }
    });
}

void Session::onTimeout() {
    switch (m_state) {
    case State::lost:
        connect();
        return;
    case State::idle:
        pingIfQuiet();
        return;
    case State::connecting:
    case State::opening:
    case State::registering:
    case State::pinging:
        m_connection->end("timed out after " + std::to_string(m_settings.replyTime.count()) + " ms");
        return;
    case State::stopped:
        return;
    }
}

void Session::onEnd(const std::string& why) {
    const bool wasReady = m_state == State::idle || m_state == State::pinging;
    if (wasReady && steady_clock::now() - m_readySince > m_settings.longestPause)
        m_failures = 0;
    const char* const what = m_state == State::connecting ? "cannot connect: " : "connection lost: ";
    m_state = State::lost;
    m_responder.reset();
    m_connection.reset();
    limitTime(pauseAfter(m_failures++, m_settings));
    if (!std::exchange(m_isLossReported, true))
        report(what + why);
}

void Session::stop() {
    const bool isOpen = m_state == State::registering || m_state == State::idle || m_state == State::pinging;
    m_state = State::stopped;
    m_timer.cancel();
    m_responder.reset();
    if (!m_connection)
        return;
    if (isOpen)
        m_connection->send(agentx::closePdu(nextHeader()));
    m_connection->finish();
}

/** Out of memory: the line is lost. */
void Session::report(const std::string& message) const noexcept {
    try {
        m_settings.log("master " + m_settings.master.text + ": " + message);
    } catch (const std::exception&) {
        return;
    }
}

} // namespace snmp
