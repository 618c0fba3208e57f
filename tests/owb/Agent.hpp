#ifndef TESTS_OWB_AGENT_HPP
#define TESTS_OWB_AGENT_HPP
#include "owb.h"

#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/ScriptedPeer.hpp"

#include <functional>
#include <string>
#include <vector>

/** Bodies of requests, in order. */
using Requests = std::vector<std::string>;

/** An agent in a separate process, with the trace on, and its scripted object manager. */
class Agent {
public:
    explicit Agent(std::vector<support::Step> script)
        : m_peer(std::move(script)) {}

    /**
     * Runs the agent with an empty queue and the URL of the object manager, but no client; returns what it
     * printed.
     */
    std::string run(const std::function<void(TestQueue&)>& body) const {
        return m_trace.run([&] {
            OWB_URLSet(m_peer.url().c_str());
            TestQueue q;
            body(q);
        });
    }

    /** The requests that the object manager received. */
    Requests requests() const {
        Requests bodies;
        for (const std::string& request : m_peer.requests())
            bodies.push_back(request.substr(request.find("\r\n\r\n") + 4));
        return bodies;
    }

    /** The lines that one function traced, as `line: message`. */
    Lines tracedBy(const std::string& function) const { return withoutPlaces(m_trace.linesOf(function)); }

    const support::ScriptedPeer& peer() const { return m_peer; }
    const TraceLog& trace() const { return m_trace; }

private:
    support::ScriptedPeer m_peer;
    TraceLog m_trace;
};

#endif
