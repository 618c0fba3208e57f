#ifndef HTTP_SESSIONS_HPP_INCLUDED
#define HTTP_SESSIONS_HPP_INCLUDED
#include <cstddef>
#include <set>

namespace cimom {

class Session;

/** The sessions of an object manager whose connections are open. */
class Sessions {
public:
    Sessions() = default;
    Sessions(const Sessions&) = delete;
    Sessions& operator=(const Sessions&) = delete;

    /** Called by each session when it begins, and when it is gone. */
    void add(Session& session) { m_all.insert(&session); }
    void remove(Session& session) { m_all.erase(&session); }

    std::size_t count() const { return m_all.size(); }
    /** Those whose clients came over the network. */
    std::size_t countOnNetwork() const;

    /** See Session::forgetLogin(). */
    void forgetLogins();
    /** See Session::finish(). */
    void finish();

private:
    std::set<Session*> m_all;
};

} // namespace cimom
#endif
