// The Help menu.
#include "ui/frm_fountain.h"
#include "ui/frm_splash.h"
#include "ui/message_prompts.h"

namespace ui {

void frmFountain::BuildHelp()
{
    help_ = new HelpDesk(this);
    const std::vector<QAction*>& actions = actions_[timeline::kHelpMenu];
    for (std::size_t i = 0; i < actions.size(); ++i)
        connect(actions[i], &QAction::triggered, this,
                [this, i] { mnuHelpAction_Click(static_cast<int>(i)); });
}

void frmFountain::UseHelp(const QString& helpFile, const QString& userFolder)
{
    help_->Use(helpFile, userFolder);
}

void frmFountain::mnuHelpAction_Click(int item)
{
    if (item == HelpDesk::kAboutItem) {
        (new frmSplash(this))->ShowAbout();
        return;
    }
    const QString problem = help_->Open(static_cast<HelpDesk::Item>(item));
    if (problem.isEmpty())
        return;
    MessagePrompts prompts;
    prompts.SetWindow(this);
    prompts.Warn(problem.toStdString());
}

}  // namespace ui
