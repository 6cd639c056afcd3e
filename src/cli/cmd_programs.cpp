// quillotune-cli programs [--start N FILE...]: the external programs of the preferences
// (keys extPrg01 to extPrg10), and the start of one with files as its arguments.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/Settings.h"
#include "prefs/modExtPrg.h"

namespace {

const char kProgramsUsage[] =
    "usage: quillotune-cli programs | programs --start N FILE...\n"
    "  Lists the external programs set up in the preferences, one line each:\n"
    "  \"KEY<TAB>NAME<TAB>PATH\". With --start, program N (1 to 10) is started with the\n"
    "  files as its arguments, each handed over unchanged (no shell). Exit code 1 when\n"
    "  the program is not set up or can't be started.";

} // namespace

int RunPrograms(const QStringList& args) {
    if (args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"))) {
        Out(QLatin1String(kProgramsUsage));
        return 0;
    }
    LoadProgramTexts();
    const std::vector<ExternalProgram> programs = ExternalPrograms(Settings());
    if (args.isEmpty()) {
        for (const ExternalProgram& p : programs)
            Out(p.Key() + u'\t' + p.name + u'\t' + p.path);
        return 0;
    }
    if (args.first() != QLatin1String("--start") || args.size() < 2) {
        Err(QLatin1String(kProgramsUsage));
        return 2;
    }
    bool ok = false;
    const int n = args.at(1).toInt(&ok);
    if (!ok || n < 1 || n > kMaxExternalPrograms) {
        Err(QLatin1String(kProgramsUsage));
        return 2;
    }
    for (const ExternalProgram& p : programs) {
        if (p.number != n)
            continue;
        CliPrompt prompt;
        return StartExternalProgram(p.path, args.mid(2), prompt) ? 0 : 1;
    }
    Err(QStringLiteral("quillotune-cli: no program %1 is set up").arg(n));
    return 1;
}
