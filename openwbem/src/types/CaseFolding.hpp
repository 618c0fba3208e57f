#ifndef OPENWBEM_CASE_FOLDING_HPP_INCLUDED
#define OPENWBEM_CASE_FOLDING_HPP_INCLUDED

namespace OpenWBEM {

/**
 * Compares two UTF-8 texts by their characters, whatever their case: negative, zero or positive. Folds by
 * Unicode's simple mappings, in every locale of the process alike. Malformed bytes equal themselves alone.
 */
int compareFolded(const char* a, const char* b);

} // namespace OpenWBEM
#endif
