#include "themes/theme_import_failure.h"

#include <fmt/format.h>

namespace vl1 {

namespace {

struct failure_texts {
    const char* english;
    const char* german;
};

// Indexed by theme_import_failure - 1. The texts are fixed user texts, typos included: tests
// and translations compare them character for character.
constexpr failure_texts texts[] = {
    {"Failed to open or read file '{0}'", "Fehler beim Öffnen oder beim Lesen der Datei '{0}'"},
    {"Failed to open or read file '{0}'\n",
     "Die Datei '{0}' konnte nicht gefunden, nicht geöffnet oder nicht gelesen werden.\n"},
    {"The file 'theme.json' file may have formatting errors (code {0}).",
     "Die Datei 'theme.json' ist eventuell nicht korrekt formatiert (Fehlercode {0})."},
    {"Need to specify theme name (\"name\": \"myname\") in theme.json root.",
     "Der Name der Theme muss als \"name\": \"myname\" in der Datei theme.json in der obersten JSON-Ebene stehen."},
    {"Need to specify theme version (\"version\": N) in theme.json root.",
     "Die Version der Theme muss als \"version\": N (ganze Zah) in der Datei theme.json in der obersten JSON-Ebene "
     "stehen."},
    {"Theme version must be greater equal 1.", "Die Version der Theme muss größer oder gleich 1 sein."},
    {"If theme version is greater then 1, need to specify the \"uid\" of an existing theme that is to be modified.",
     "Wenn die Version der Theme größer als 1 sein soll, muss auch die \"uid\" einer vorhandenen Theme angegeben "
     "sein."},
    {"Cannot understand specified \"uid\" ('{0}') as hexidecimal.",
     "Die \"uid\" muss hexidezimal sein (es wurde {0} angegeben)."},
    {"Failed to open or read file '{0}'.",
     "Die Datei '{0}' konnte nicht gefunden, nicht geöffnet oder nicht gelesen werden."},
    {"Failed to load LUT from file or resource '{0}'.",
     "Fehler beim Laden einer LUT aus der Datei oder Ressource'{0}'."},
    {"Theme is not self-consistent. Please check the angle values.",
     "Die Theme ist nicht schlüssig. Überprüfen Sie bitte die Winkelzahlen."},
    {"The file '{0}' named in theme.json lies outside the theme folder; name a file inside it.",
     "Die Datei '{0}' aus theme.json liegt außerhalb des Theme-Ordners; bitte eine Datei darin angeben."},
};

static_assert(std::size(texts) == static_cast<std::size_t>(theme_import_failure::file_outside_folder));

}  // namespace

void describe_import_failure(theme_import_failure failure, const std::string& argument, std::string& english,
                             std::string& german)
{
    const failure_texts& entry = texts[static_cast<std::size_t>(failure) - 1];
    english = fmt::format(fmt::runtime(entry.english), argument);
    german = fmt::format(fmt::runtime(entry.german), argument);
}

}  // namespace vl1
