#pragma once

namespace platform {
class ListView;
}

namespace tumblewick {

// The six columns of the list of questions, on the screen that makes a quiz and on the one that edits it.
class QuizColumns {
public:
    // Gives `list` its titles and the first column its width. The list has to outlive this.
    explicit QuizColumns(platform::ListView &list);

    // Shares what the first column leaves among the other five. Raises 6 for a list of more than 32,767 twips
    // behind its first column.
    void Share();

    // Keeps the proportions of the columns when the list has another width.
    void FollowList();

private:
    platform::ListView &m_list;
    int m_width; // of the list that the columns are made for, in twips
};

} // namespace tumblewick
