#include "TestMain.h"
class Teststructure_damage : public QObject
{
    Q_OBJECT
};
NK_TEST_MAIN(Teststructure_damage)
#include "test_scene_structure_damage.moc"
