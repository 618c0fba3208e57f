#ifndef TESTS_CIMOM_RECORDED_SCHEMA_HPP
#define TESTS_CIMOM_RECORDED_SCHEMA_HPP
// The classes and instances of the recorded conversations, for our object manager.
#include "objects/ObjectManager.hpp"

#include <vector>

/**
 * The recorded classes. The site may write Model and ElementName of QAV_K70Chassis, because the recorded
 * client does; all other properties are read-only.
 */
std::vector<cimom::ClassDeclaration> recordedClasses();

/**
 * An object manager that serves classes with the instances of their recorded enumerations.
 *
 * @param newer instances that replace those with the same keys
 */
cimom::ObjectManager recordedManager(std::vector<cimom::ClassDeclaration> classes,
                                     const std::vector<OpenWBEM::CIMInstance>& newer = {});

/** The same without QAV_Many, whose replies take long. */
cimom::ObjectManager recordedManagerOfShortReplies();

#endif
