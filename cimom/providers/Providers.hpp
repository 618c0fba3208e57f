#ifndef CIMOM_PROVIDERS_PROVIDERS_HPP_INCLUDED
#define CIMOM_PROVIDERS_PROVIDERS_HPP_INCLUDED
#include "host/Host.hpp"
#include "providers/Provider.hpp"

#include <boost/asio/io_context.hpp>
#include <vector>

namespace cimom {

/**
 * All served classes.
 *
 * @param host must outlive the providers
 * @param io runs the child processes that ask programs of the host; must not run after the providers are gone
 */
std::vector<Provider> makeProviders(const Host& host, boost::asio::io_context& io);

} // namespace cimom
#endif
