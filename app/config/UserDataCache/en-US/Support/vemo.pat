;; Hatch patterns. *NAME, description; then a family of lines each: angle, x,y, shift,spacing, dashes.
*SLANTED, Parallel lines at 45 degrees
45, 0,0, 0,3
*CROSSED, Crossed lines
0, 0,0, 0,5
90, 0,0, 0,5
*MASONRY, Brickwork, 240 by 60
0, 0,0, 0,60
90, 0,0, 60,120, 60,-60
*INSULATION, Insulation, strokes leaning both ways
60, 0,0, 0,10
120, 0,0, 0,10
0, 0,0, 0,40
*SOIL, Soil, groups of three strokes
45, 0,0, 9,9, 9,-9
45, 0,3, 9,9, 9,-9
45, 0,6, 9,9, 9,-9
