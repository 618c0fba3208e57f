#include "arguments/Help.hpp"

#include "arguments/Names.hpp"
#include "arguments/Suggestion.hpp"

namespace owbctl {

std::string HelpFormat::make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const {
    const std::string text = CLI::Formatter::make_subcommands(app, mode);
    const CLI::App* program = app;
    while (program->get_parent() != nullptr)
        program = program->get_parent();
    if (program == app)
        return text;
    const auto isOther = [program](const CLI::Option* option) {
        return option->nonpositional() && option != program->get_help_ptr();
    };
    return text + make_group("Options of all commands", false, program->get_options(isOther));
}

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

std::string helpOf(const CLI::App& app, const std::vector<std::string>& command) {
    const CLI::App* found = &app;
    std::string name = app.get_name();
    for (const std::string& word : command) {
        const auto commands =
            found->get_subcommands([&word](const CLI::App* each) { return each->get_name() == word; });
        if (commands.empty())
            throw UsageError("unknown command '" + word + "'" + suggestion(word, commandNames(*found)));
        found = commands.front();
        name += " " + word;
    }
    // Not found->help(), which shows the help of the command that was given: "help".
    return app.get_formatter()->make_help(found, name, CLI::AppFormatMode::Normal);
}

} // namespace owbctl
