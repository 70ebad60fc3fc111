#ifndef QUVRA_CBTR_CUBE_TREE_H
#define QUVRA_CBTR_CUBE_TREE_H

/* The stock: a cube tree over a fixed lattice, built from a closed triangle
   soup, cut and added to by tool volumes, saved to and read from files. */

#include <stdint.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace cbtr {
class cube_tree_t;
}
typedef cbtr::cube_tree_t cube_tree_t;
#else
typedef struct cube_tree_t cube_tree_t;
#endif

QV_EXTERN_C_BEGIN

/* Null-safe. */
QV_API void cube_tree__delete(cube_tree_t* tree) QV_NOEXCEPT;

/* Edge length of the tree's finest cells in model units: 2^(17 - r) for
   resolution r, 131072 for a tree whose resolution is not set; 0 for null. */
QV_API double cube_tree__get_grid_width(const cube_tree_t* tree) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
