/*!40101 SET NAMES utf8mb4 */;
-- c;
INSERT INTO `a;b` VALUES ('x;\'y',"z;");
DELIMITER ;;
CREATE PROCEDURE p() BEGIN -- it's;
 SELECT 1; END
;;
DELIMITER ;
# x;
SELECT 1 -- y;
;
