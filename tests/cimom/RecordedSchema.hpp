#ifndef TESTS_CIMOM_RECORDED_SCHEMA_HPP
#define TESTS_CIMOM_RECORDED_SCHEMA_HPP
// The classes and instances that the recorded conversations are about, for an object manager of ours.
#include "objects/ObjectManager.hpp"

#include <vector>

/**
 * The recorded classes. Of QAV_K70Chassis, Model and ElementName are the site's to write, as the recorded
 * client does; everything else is read-only.
 */
std::vector<cimom::ClassDeclaration> recordedClasses();

/**
 * An object manager that serves classes, with the instances that the recorded enumerations hold.
 *
 * @param newer instances that replace those with the same keys
 */
cimom::ObjectManager recordedManager(std::vector<cimom::ClassDeclaration> classes,
                                     const std::vector<OpenWBEM::CIMInstance>& newer = {});

/** The same without QAV_Many, whose replies take long. */
cimom::ObjectManager recordedManagerOfShortReplies();

#endif
