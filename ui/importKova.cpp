// Links the QML module into the program that compiles this file.
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(KovaPlugin)
