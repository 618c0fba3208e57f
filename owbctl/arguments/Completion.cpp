#include "arguments/Completion.hpp"

#include "arguments/CommandLine.hpp"
#include "arguments/Help.hpp"
#include "arguments/Names.hpp"

#include <algorithm>
#include <set>

namespace owbctl {

using namespace agent;

namespace {

using Strings = std::vector<std::string>;

/** What precedes the word to complete. */
struct Context {
    const CLI::App* program;
    /** The innermost command. */
    const CLI::App* command;
    Strings positionals;
    /** Option whose value the word is; null for none. */
    const CLI::Option* option;
};

const CLI::Option* findOption(const Context& context, const std::string& name) {
    const CLI::Option* const own = context.command->get_option_no_throw(name);
    return own != nullptr ? own : context.program->get_option_no_throw(name);
}

const CLI::App* findCommand(const CLI::App* app, const std::string& name) {
    const auto commands =
        app->get_subcommands([&name](const CLI::App* each) { return each->get_name() == name; });
    return commands.empty() ? nullptr : commands.front();
}

void takeIn(Context& context, const std::string& word) {
    if (!word.empty() && word.front() == '-') {
        const CLI::Option* const option = findOption(context, word);
        const bool takesValue = option != nullptr && option->get_items_expected_max() > 0;
        context.option = takesValue ? option : nullptr;
    } else if (context.option != nullptr) {
        if (!context.option->get_allow_extra_args())
            context.option = nullptr;
    } else if (const CLI::App* const command = findCommand(context.command, word)) {
        context.command = command;
    } else {
        context.positionals.push_back(word);
    }
}

Strings groupWords() {
    Strings words;
    std::set<std::string> classes;
    for (const long group : everyGroup()) {
        words.push_back(std::to_string(group));
        words.emplace_back(classOf(group).shortName);
        classes.insert(classOf(group).name);
    }
    words.insert(words.end(), classes.begin(), classes.end());
    return words;
}

Strings propertyWords(const Strings& groups, const std::string& suffix = "") {
    Strings words;
    for (const long group : groupsNamed(groups)) {
        for (const Attribute* attribute : attributesOf(group))
            words.push_back(attribute->property + suffix);
    }
    return words;
}

/** The properties that `set` can change, each with the "=" that precedes its value. */
Strings assignmentWords(const std::string& group) {
    Strings words;
    for (const long number : groupsNamed(group)) {
        for (const Attribute* attribute : attributesOf(number)) {
            if (attribute->isSettable())
                words.push_back(std::string(attribute->property) + "=");
        }
    }
    return words;
}

Strings valuesOf(const Context& context) {
    const CLI::Option& option = *context.option;
    if (option.check_lname("output"))
        return outputNames;
    if (option.check_lname("unit"))
        return unitNames;
    if (option.check_lname("sort"))
        return processOrderNames;
    if (option.check_lname("format"))
        return metricsFormatNames;
    if (option.check_lname("group"))
        return groupWords();
    if (option.check_lname("property") || option.check_lname("columns"))
        return propertyWords(context.positionals);
    if (option.check_lname("where"))
        return propertyWords(context.positionals, "=");
    return {};
}

Strings optionNames(const Context& context) {
    Strings names;
    for (const CLI::App* app : std::set<const CLI::App*>{context.command, context.program}) {
        for (const CLI::Option* option : app->get_options()) {
            for (const std::string& name : option->get_lnames())
                names.push_back("--" + name);
        }
    }
    return names;
}

Strings wordsOf(const Context& context) {
    Strings words;
    for (const CLI::App* command : context.command->get_subcommands([](const CLI::App*) { return true; }))
        words.push_back(command->get_name());
    const std::string command = context.command->get_name();
    if (command == "help")
        return commandNames(*context.program);
    const std::size_t index = context.positionals.size();
    if (command == "get" || command == "groups" || command == "watch" || command == "metrics" ||
        (command == "set" && index == 0))
        words = groupWords();
    if (command == "get" || command == "watch" || command == "metrics")
        words.emplace_back(allGroups);
    if (command == "set" && index >= 2)
        words = assignmentWords(context.positionals.front());
    return words;
}

Strings candidatesFor(Context& context, const std::string& prefix) {
    if (prefix.empty() || prefix.front() != '-')
        return context.option != nullptr ? valuesOf(context) : wordsOf(context);
    const std::size_t mark = prefix.find('=');
    if (mark == std::string::npos)
        return optionNames(context);
    takeIn(context, prefix.substr(0, mark));
    Strings values = context.option == nullptr ? Strings() : valuesOf(context);
    for (std::string& value : values)
        value.insert(0, prefix, 0, mark + 1);
    return values;
}

} // namespace

std::vector<std::string> completions(const CLI::App& app, const std::vector<std::string>& words) {
    const std::string prefix = words.empty() ? std::string() : words.back();
    Context context{&app, &app, {}, nullptr};
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        takeIn(context, words[i]);
    Strings candidates = candidatesFor(context, prefix);
    const auto isOther = [&prefix](const std::string& word) {
        return word.compare(0, prefix.size(), prefix) != 0;
    };
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(), isOther), candidates.end());
    std::sort(candidates.begin(), candidates.end());
    candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
    return candidates;
}

} // namespace owbctl
