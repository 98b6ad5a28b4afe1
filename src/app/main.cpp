#include "ui/application.h"

int main(int argc, char** argv)
{
    return ui::Run(argc, argv);
}
