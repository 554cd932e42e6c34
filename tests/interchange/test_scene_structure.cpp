#include "TestMain.h"
class Teststructure : public QObject
{
    Q_OBJECT
};
NK_TEST_MAIN(Teststructure)
#include "test_scene_structure.moc"
