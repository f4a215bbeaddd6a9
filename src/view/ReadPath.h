#pragma once

// How the view reads what a refresh or an expansion shows. The reference
// path asks record by record, step by step as the view's algorithms are
// written; the set-based path reads the same records in a few statements
// over whole sets (the files of a system, the objects of an application)
// and hands them to the same steps. Both show the same tree; the reference
// path stays selectable to settle any doubt by comparison.
enum class TQXReadPath { SetBased, Reference };
